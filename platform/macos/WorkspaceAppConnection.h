#pragma once

#include <optional>
#include <string>

#include "UserDefaultsDomain.h"
#include "automation/AppConnection.h"

namespace wakeloft {

// The app as the command reaches it through Launch Services: whether an app
// with its bundle identifier runs, addresses opened by the shared workspace
// without bringing anything forward (an app that is not running is launched
// in the background), and the app's preferences domain. An address goes to
// the running copy of the app if there is one, else to the command's own
// app, and only without either to the copy Launch Services picks.
class WorkspaceAppConnection final : public AppConnection {
 public:
  // `deliveryTimeout` bounds the wait for the system to hand an address
  // over, a cold launch of the app included.
  WorkspaceAppConnection(const std::string& bundleIdentifier, double deliveryTimeout);

  // The app this process's executable is the command of, from its resolved
  // path; nothing for a command outside an app.
  static std::optional<std::string> commandsOwnApp();

  // The running copy's bundle, else the command's own app.
  std::optional<std::string> appPath() const;

  bool isAppRunning() const override;
  void open(const std::string& address) override;
  DefaultsDomain& appDefaults() override { return defaults_; }

 private:
  std::string bundleIdentifier_;
  double deliveryTimeout_;
  std::optional<std::string> ownApp_;
  UserDefaultsDomain defaults_;
};

}  // namespace wakeloft
