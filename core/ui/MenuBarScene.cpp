#include "ui/MenuBarScene.h"

#include <cmath>

#include "base/MainThread.h"
#include "ui/MenuBarItem.h"
#include "ui/PanelAction.h"

namespace wakeloft {

MenuBarScene::MenuBarScene(Controllers controllers, std::shared_ptr<UpdateReminder> updateReminder,
                           std::string locale, OperatingSystemVersion system,
                           std::shared_ptr<const DateProvider> dates, std::shared_ptr<DeadlineScheduler> ticks,
                           Views views, Defer defer)
    : controllers_(std::move(controllers)),
      updateReminder_(std::move(updateReminder)),
      locale_(std::move(locale)),
      system_(system),
      dates_(std::move(dates)),
      ticks_(std::move(ticks)),
      views_(std::move(views)),
      defer_(std::move(defer)) {
  requireMainThread("MenuBarScene");
  const auto onChange = weakSelf_([](MenuBarScene& self) { self.changed(); });
  subscriptions_.push_back(controllers_.awake->observe(onChange));
  subscriptions_.push_back(controllers_.lid->observe(onChange));
  subscriptions_.push_back(controllers_.loginItem->observe(onChange));
  subscriptions_.push_back(controllers_.presets->observe(onChange));
  if (controllers_.binding) subscriptions_.push_back(controllers_.binding->observe(onChange));
  if (controllers_.consent) subscriptions_.push_back(controllers_.consent->observe(onChange));
  if (controllers_.screenOn) subscriptions_.push_back(controllers_.screenOn->observe(onChange));
  if (controllers_.automatic) subscriptions_.push_back(controllers_.automatic->observe(onChange));
  if (updateReminder_) subscriptions_.push_back(updateReminder_->changed().observe(onChange));
  showIcon();
}

MenuBarScene::~MenuBarScene() {
  if (isTicking_) ticks_->cancel();
}

void MenuBarScene::panelWillOpen() {
  requireMainThread("MenuBarScene::panelWillOpen");
  isPanelOpen_ = true;
  refresh();
  showIcon();
  showPanel(/*always=*/true);
  updateTicking();
}

void MenuBarScene::panelBecameKey() {
  requireMainThread("MenuBarScene::panelBecameKey");
  refresh();
}

void MenuBarScene::panelDidClose() {
  requireMainThread("MenuBarScene::panelDidClose");
  isPanelOpen_ = false;
  // The next opening builds the panel anew.
  shownPanel_.reset();
  updateTicking();
}

void MenuBarScene::perform(const PanelAction& action) {
  requireMainThread("MenuBarScene::perform");
  wakeloft::perform(action, controllers_, views_.openLoginItemsSettings, views_.revealApplicationsFolder);
  mustShowPanel_ = true;
  changed();
}

double MenuBarScene::untilNextSecond(double remaining) {
  if (!(remaining > 0)) return 0;
  return remaining - (std::ceil(remaining) - 1);
}

void MenuBarScene::refresh() {
  // A session that ran out, a lease that lapsed or an approval given while
  // the panel was closed shows at once.
  wakeloft::perform(AwakePanelContent::onOpen(), controllers_, views_.openLoginItemsSettings);
}

void MenuBarScene::changed() {
  if (isRenderPending_) return;
  isRenderPending_ = true;
  defer_(weakSelf_([](MenuBarScene& self) {
    self.isRenderPending_ = false;
    self.render();
  }));
}

void MenuBarScene::render() {
  showIcon();
  if (isPanelOpen_) showPanel(/*always=*/false);
  updateTicking();
}

void MenuBarScene::showIcon() {
  const bool updateWaiting = updateReminder_ && updateReminder_->waitingVersion();
  const auto icon = MenuBarItem::icon(*controllers_.awake, *controllers_.lid, updateWaiting);
  if (shownIcon_ == icon) return;
  shownIcon_ = icon;
  if (views_.showIcon) views_.showIcon(icon, MenuBarItem::iconLabel(icon, views_.lookup));
}

void MenuBarScene::showPanel(bool always) {
  auto content = AwakePanelContent::current(controllers_, locale_, system_);
  if (!always && !mustShowPanel_ && shownPanel_ == content) return;
  mustShowPanel_ = false;
  shownPanel_ = content;
  if (views_.showPanel) views_.showPanel(content);
}

void MenuBarScene::updateTicking() {
  const auto& awake = *controllers_.awake;
  auto remaining = awake.isOn() && awake.activeUntil() ? awake.remaining() : std::nullopt;
  // An automatic session's grace period counts down as a timer does.
  if (!remaining && awake.isOn() && awake.isAutomatic() && controllers_.automatic) {
    remaining = controllers_.automatic->graceLeft();
  }
  if (!isPanelOpen_ || !remaining || !(*remaining > 0)) {
    if (isTicking_) ticks_->cancel();
    isTicking_ = false;
    return;
  }
  isTicking_ = true;
  ticks_->schedule(dates_->now().adding(untilNextSecond(*remaining)), weakSelf_([](MenuBarScene& self) {
                     self.isTicking_ = false;
                     self.render();
                   }));
}

}  // namespace wakeloft
