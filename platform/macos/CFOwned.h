#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>
#include <utility>

namespace wakeloft {

// Owns one Core Foundation reference obtained under the Create rule and
// releases it once.
template <typename Ref>
class CFOwned {
 public:
  CFOwned() = default;
  explicit CFOwned(Ref ref) : ref_(ref) {}
  CFOwned(CFOwned&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
  CFOwned& operator=(CFOwned&& other) noexcept {
    if (this != &other) {
      reset();
      ref_ = std::exchange(other.ref_, nullptr);
    }
    return *this;
  }
  CFOwned(const CFOwned&) = delete;
  CFOwned& operator=(const CFOwned&) = delete;
  ~CFOwned() { reset(); }

  Ref get() const { return ref_; }
  explicit operator bool() const { return ref_ != nullptr; }

 private:
  void reset() {
    if (ref_) CFRelease(ref_);
    ref_ = nullptr;
  }

  Ref ref_ = nullptr;
};

// A CFString with the text's UTF-8 bytes; empty when they are not UTF-8.
inline CFOwned<CFStringRef> makeCFString(const std::string& text) {
  return CFOwned<CFStringRef>(CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
                                                      static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8,
                                                      false));
}

// The string's text as UTF-8; characters UTF-8 cannot carry (lone surrogates)
// become '?'.
inline std::string utf8(CFStringRef string) {
  const CFRange whole = CFRangeMake(0, CFStringGetLength(string));
  CFIndex size = 0;
  CFStringGetBytes(string, whole, kCFStringEncodingUTF8, '?', false, nullptr, 0, &size);
  std::string text(static_cast<std::string::size_type>(size), '\0');
  CFStringGetBytes(string, whole, kCFStringEncodingUTF8, '?', false, reinterpret_cast<UInt8*>(text.data()), size,
                   &size);
  text.resize(static_cast<std::string::size_type>(size));
  return text;
}

}  // namespace wakeloft
