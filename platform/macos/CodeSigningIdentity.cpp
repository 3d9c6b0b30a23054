#include "CodeSigningIdentity.h"

#include <Security/Security.h>
#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <span>

#include "CFOwned.h"
#include "helper/CodeSigningText.h"

namespace wakeloft::CodeSigningIdentity {

namespace {

// int csops(pid_t pid, unsigned int ops, void* useraddr, size_t usersize)
using Csops = int (*)(pid_t, unsigned int, void*, size_t);

// The kernel's code-signing call is in the system library, but no public
// header declares it: look it up among the images already loaded.
Csops csops() {
  static const Csops call = reinterpret_cast<Csops>(::dlsym(RTLD_DEFAULT, "csops"));
  return call;
}

CFOwned<SecStaticCodeRef> ownStaticCode() {
  SecCodeRef self = nullptr;
  if (SecCodeCopySelf(kSecCSDefaultFlags, &self) != errSecSuccess) return {};
  const CFOwned<SecCodeRef> code(self);
  SecStaticCodeRef staticCode = nullptr;
  if (SecCodeCopyStaticCode(code.get(), kSecCSDefaultFlags, &staticCode) != errSecSuccess) return {};
  return CFOwned<SecStaticCodeRef>(staticCode);
}

}  // namespace

std::optional<std::string> currentTeamIdentifier() {
  const Csops call = csops();
  if (!call) return std::nullopt;
  std::array<std::uint8_t, CodeSigningText::teamIdentifierBufferSize> buffer{};
  if (call(::getpid(), CodeSigningText::teamIdentifierOperation, buffer.data(), buffer.size()) != 0) {
    return std::nullopt;
  }
  return CodeSigningText::teamIdentifier(buffer);
}

std::optional<std::string> currentCodeDirectoryHash() {
  const Csops call = csops();
  if (!call) return std::nullopt;
  std::array<std::uint8_t, CodeSigningText::codeDirectoryHashSize> buffer{};
  if (call(::getpid(), CodeSigningText::codeDirectoryHashOperation, buffer.data(), buffer.size()) != 0) {
    return std::nullopt;
  }
  return CodeSigningText::codeDirectoryHash(buffer);
}

std::optional<std::string> currentDesignatedRequirement() {
  const auto staticCode = ownStaticCode();
  if (!staticCode) return std::nullopt;
  SecRequirementRef designated = nullptr;
  if (SecCodeCopyDesignatedRequirement(staticCode.get(), kSecCSDefaultFlags, &designated) != errSecSuccess) {
    return std::nullopt;
  }
  const CFOwned<SecRequirementRef> requirement(designated);
  CFStringRef text = nullptr;
  if (SecRequirementCopyString(requirement.get(), kSecCSDefaultFlags, &text) != errSecSuccess) return std::nullopt;
  const CFOwned<CFStringRef> owned(text);
  return utf8(owned.get());
}

std::optional<std::string> codeDirectoryHash(const std::string& path, const std::string& requirement) {
  const CFOwned<CFURLRef> url(CFURLCreateFromFileSystemRepresentation(
      kCFAllocatorDefault, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()), false));
  if (!url) return std::nullopt;
  SecStaticCodeRef code = nullptr;
  if (SecStaticCodeCreateWithPath(url.get(), kSecCSDefaultFlags, &code) != errSecSuccess) return std::nullopt;
  const CFOwned<SecStaticCodeRef> staticCode(code);

  const auto text = makeCFString(requirement);
  if (!text) return std::nullopt;
  SecRequirementRef compiled = nullptr;
  if (SecRequirementCreateWithString(text.get(), kSecCSDefaultFlags, &compiled) != errSecSuccess) return std::nullopt;
  const CFOwned<SecRequirementRef> owned(compiled);

  if (SecStaticCodeCheckValidity(staticCode.get(), kSecCSDefaultFlags, owned.get()) != errSecSuccess) {
    return std::nullopt;
  }
  CFDictionaryRef information = nullptr;
  if (SecCodeCopySigningInformation(staticCode.get(), kSecCSDefaultFlags, &information) != errSecSuccess) {
    return std::nullopt;
  }
  const CFOwned<CFDictionaryRef> info(information);
  const CFTypeRef unique = CFDictionaryGetValue(info.get(), kSecCodeInfoUnique);
  if (!unique || CFGetTypeID(unique) != CFDataGetTypeID()) return std::nullopt;
  const auto data = static_cast<CFDataRef>(unique);
  // Held to the kernel's size: a hash of another length could never match
  // the running one, and must not pass for a new helper.
  return CodeSigningText::codeDirectoryHash(
      std::span<const std::uint8_t>(CFDataGetBytePtr(data), static_cast<std::size_t>(CFDataGetLength(data))));
}

bool processMeets(pid_t pid, const std::string& requirement) {
  const CFOwned<CFNumberRef> number(CFNumberCreate(kCFAllocatorDefault, kCFNumberIntType, &pid));
  const void* keys[] = {kSecGuestAttributePid};
  const void* values[] = {number.get()};
  const CFOwned<CFDictionaryRef> attributes(CFDictionaryCreate(
      kCFAllocatorDefault, keys, values, 1, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
  SecCodeRef guest = nullptr;
  if (!attributes || SecCodeCopyGuestWithAttributes(nullptr, attributes.get(), kSecCSDefaultFlags, &guest) != errSecSuccess) {
    return false;
  }
  const CFOwned<SecCodeRef> code(guest);
  const CFOwned<CFStringRef> text(
      CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(requirement.data()),
                              static_cast<CFIndex>(requirement.size()), kCFStringEncodingUTF8, false));
  if (!text) return false;
  SecRequirementRef compiled = nullptr;
  if (SecRequirementCreateWithString(text.get(), kSecCSDefaultFlags, &compiled) != errSecSuccess) return false;
  const CFOwned<SecRequirementRef> owned(compiled);
  return SecCodeCheckValidity(code.get(), kSecCSDefaultFlags, owned.get()) == errSecSuccess;
}

}  // namespace wakeloft::CodeSigningIdentity
