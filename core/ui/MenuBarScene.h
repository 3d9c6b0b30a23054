#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Observation.h"
#include "base/WeakSelf.h"
#include "clock/DateProvider.h"
#include "clock/DeadlineScheduler.h"
#include "clock/MainRunLoop.h"
#include "prefs/OperatingSystemVersion.h"
#include "status/MenuBarIcon.h"
#include "ui/AwakePanelContent.h"
#include "ui/Controllers.h"
#include "ui/LocalizedText.h"
#include "ui/UpdateReminder.h"

namespace wakeloft {

// The app's one scene: the status item, shown for the life of the app, and
// the awake panel while it is open. Keeps both in step with the four
// controllers and the update reminder: a change is rendered once, in the next turn of the main loop
// however many properties changed together, and only when what the view
// shows really differs. While the panel is open and a timer runs, the
// countdown ticks each time its shown second changes; otherwise nothing
// wakes. Main thread only.
class MenuBarScene {
 public:
  // The platform's side of the scene.
  struct Views {
    // The status item's image and what VoiceOver calls it.
    std::function<void(const MenuBarIcon& icon, const LocalizedText& label)> showIcon;
    std::function<void(const AwakePanelContent& content)> showPanel;
    // The system's login-item settings, which no controller opens.
    std::function<void()> openLoginItemsSettings;
    // The Applications folder in the Finder, for a translocated copy.
    std::function<void()> revealApplicationsFolder = {};
    // The app's texts, for the icon's label that holds another (English
    // without).
    TextLookup lookup = {};
  };
  // Runs the work in a later turn of the main loop.
  using Defer = std::function<void(std::function<void()>)>;

  // The panel's durations are put into words for `locale`, the app's
  // resolved one. The icon is shown before this returns. `ticks` is the
  // scene's own scheduler. A waiting update puts its dot into the icon.
  MenuBarScene(Controllers controllers, std::shared_ptr<UpdateReminder> updateReminder, std::string locale,
               OperatingSystemVersion system, std::shared_ptr<const DateProvider> dates,
               std::shared_ptr<DeadlineScheduler> ticks, Views views, Defer defer = MainRunLoop::perform);
  MenuBarScene(const MenuBarScene&) = delete;
  MenuBarScene& operator=(const MenuBarScene&) = delete;
  ~MenuBarScene();

  // The panel is about to show: the controllers are brought up to date and
  // the panel is rendered before this returns.
  void panelWillOpen();
  // The user brought the panel's window to the front: up to date again.
  void panelBecameKey();
  void panelDidClose();
  // What a control of the panel does. The panel is shown again afterwards
  // even when nothing changed, so that a switch the controllers refused
  // goes back to how things stand.
  void perform(const PanelAction& action);

  bool isPanelOpen() const { return isPanelOpen_; }
  const Controllers& controllers() const { return controllers_; }

  // The countdown shows whole seconds rounded down, so it changes when the
  // time left passes a whole second: this long from now, in (0, 1].
  static double untilNextSecond(double remaining);

 private:
  void refresh();
  void changed();
  void render();
  void showIcon();
  void showPanel(bool always);
  void updateTicking();

  Controllers controllers_;
  std::shared_ptr<UpdateReminder> updateReminder_;
  std::string locale_;
  OperatingSystemVersion system_;
  std::shared_ptr<const DateProvider> dates_;
  std::shared_ptr<DeadlineScheduler> ticks_;
  Views views_;
  Defer defer_;

  bool isPanelOpen_ = false;
  bool isRenderPending_ = false;
  bool mustShowPanel_ = false;
  bool isTicking_ = false;
  std::optional<MenuBarIcon> shownIcon_;
  std::optional<AwakePanelContent> shownPanel_;
  std::vector<Subscription> subscriptions_;
  WeakSelf<MenuBarScene> weakSelf_{this};
};

}  // namespace wakeloft
