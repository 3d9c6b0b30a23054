#include "SystemDoctorFacts.h"

#import <Foundation/Foundation.h>

#include <exception>
#include <variant>

#include "CFPropertyListParser.h"
#include "CodeSigningIdentity.h"
#include "IOKitAssertionHolders.h"
#include "IOKitClamshell.h"
#include "LibprocProcessTable.h"
#import "NSStringText.h"
#include "PmsetSleepSetting.h"
#include "SystemMachineConditions.h"
#include "XPCLidHelperStatus.h"
#include "helper/BundleVersion.h"
#include "helper/LidHelperService.h"
#include "helper/PmsetCommand.h"
#include "prefs/StableLocation.h"

namespace wakeloft::SystemDoctorFacts {

namespace {

std::string standardizedPath(NSURL* url) { return StableLocation::standardized(utf8(url.URLByResolvingSymlinksInPath.path)); }

std::string putBackCommand() {
  std::string command = "sudo";
  for (const auto& argument : PmsetCommand::writeArguments(false)) command += " " + argument;
  return command;
}

}  // namespace

DoctorFacts read(const std::optional<std::string>& appPath, double helperTimeout) {
  DoctorFacts facts;
  if (appPath) {
    facts.appPath = standardizedPath([NSURL fileURLWithPath:nsString(*appPath) isDirectory:YES]);
    // The app's Info.plist is the one around its helper's executable.
    if (const auto version = BundleVersion::aroundExecutable(*facts.appPath + "/" + std::string(LidHelperService::bundleProgram),
                                                             CFPropertyListParser())) {
      facts.appVersion = version->text();
    }
  }
  NSArray<NSURL*>* applications = [NSFileManager.defaultManager URLsForDirectory:NSApplicationDirectory
                                                                       inDomains:NSUserDomainMask | NSLocalDomainMask];
  for (NSURL* folder in applications) facts.applicationsFolders.push_back(standardizedPath(folder));

  facts.helperAddress = std::string(LidHelperService::label);
  // Only a helper of this command's own team is asked.
  if (const auto requirement =
          LidHelperService::codeRequirement(LidHelperService::label, CodeSigningIdentity::currentTeamIdentifier())) {
    auto answer = XPCLidHelperStatus::ask(*requirement, helperTimeout);
    if (auto* status = std::get_if<LidLeaseStatus>(&answer)) {
      facts.helperAnswer = *status;
    } else {
      facts.helperSilence = std::get<std::string>(answer);
    }
  } else {
    facts.helperSilence = "this command has no signing team to hold the helper to, so it was not asked";
  }

  facts.settingName = "disablesleep";
  facts.putBackCommand = putBackCommand();
  try {
    facts.isSettingOn = PmsetSleepSetting().readDisabled();
  } catch (const std::exception& error) {
    facts.settingUnreadable = error.what();
  }

  facts.assertionHolders = IOKitAssertionHolders::read(LibprocProcessTable());
  facts.machine = SystemMachineConditions().snapshot();
  facts.closingLidSleeps = IOKitClamshell().closingCausesSleep();
  return facts;
}

}  // namespace wakeloft::SystemDoctorFacts
