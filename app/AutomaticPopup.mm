#import "AutomaticPopup.h"

#include <optional>
#include <string>
#include <vector>

#import "ActionHandler.h"
#include "BundleTexts.h"
#include "PanelViews.h"
#include "RunningAppLanguage.h"
#include "base/MainThread.h"
#include "base/Observation.h"
#include "ui/AutomaticPopupContent.h"

using namespace wakeloft;

namespace {

constexpr CGFloat inset = 14;
constexpr CGFloat textWidth = AutomaticPopupContent::width - 2 * inset;

NSTextField* hintLabel(const LocalizedText& text) {
  return PanelViews::wrappingLabel(BundleTexts::string(text), PanelViews::font(NSFontTextStyleFootnote),
                                   NSColor.secondaryLabelColor, textWidth);
}

// The pickers show times of day: a time on the reference day in UTC, so
// that no zone or daylight-saving change moves it.
NSDate* dateAt(int minutes) { return [NSDate dateWithTimeIntervalSinceReferenceDate:minutes * 60.0]; }

int minutesOf(NSDate* date) {
  const auto minutes = static_cast<long long>(date.timeIntervalSinceReferenceDate / 60);
  return static_cast<int>(((minutes % Schedule::minutesPerDay) + Schedule::minutesPerDay) % Schedule::minutesPerDay);
}

std::optional<std::string> infoString(NSBundle* bundle, NSString* key) {
  id value = [bundle objectForInfoDictionaryKey:key];
  if (![value isKindOfClass:NSString.class] || !static_cast<NSString*>(value).UTF8String) return std::nullopt;
  return std::string(static_cast<NSString*>(value).UTF8String);
}

}  // namespace

// Lets the open panel enable folders, to look inside, and app bundles only.
@interface AutomaticAppPanelFilter : NSObject <NSOpenSavePanelDelegate>
@end

@implementation AutomaticAppPanelFilter

- (BOOL)panel:(id)sender shouldEnableURL:(NSURL*)url {
  NSNumber* isDirectory = nil;
  NSNumber* isPackage = nil;
  [url getResourceValue:&isDirectory forKey:NSURLIsDirectoryKey error:nil];
  [url getResourceValue:&isPackage forKey:NSURLIsPackageKey error:nil];
  const char* path = url.fileSystemRepresentation;
  return path && AutomaticPopupContent::isChoosableInOpenPanel(path, isDirectory.boolValue, isPackage.boolValue);
}

@end

@implementation AutomaticPopup {
  std::shared_ptr<AutomaticSessionController> _automatic;
  std::shared_ptr<ScreenLockSetting> _screenLock;
  Subscription _automaticChanged;
  // In the content's order of rules.
  NSMutableArray<NSButton*>* _ruleSwitches;
  NSStackView* _appList;
  NSButton* _addApp;
  NSTextField* _appRefusal;
  // In the content's order of days.
  NSMutableArray<NSButton*>* _days;
  std::vector<Schedule::Weekday> _weekdays;
  NSDatePicker* _start;
  NSDatePicker* _end;
  NSPopUpButton* _combinations;
  std::vector<AutomaticRules::Combination> _combinationChoices;
  NSButton* _screenLockSwitch;
  NSTextField* _managedNote;
}

- (instancetype)initWithAutomatic:(std::shared_ptr<AutomaticSessionController>)automatic
                       screenLock:(std::shared_ptr<ScreenLockSetting>)screenLock {
  self = [super initWithNibName:nil bundle:nil];
  if (self) {
    _automatic = std::move(automatic);
    _screenLock = std::move(screenLock);
  }
  return self;
}

- (AutomaticPopupContent)content {
  return AutomaticPopupContent::current(*_automatic, RunningAppLanguage::locale(), _screenLock.get());
}

// The layout never changes but for the app list; render sets the values.
- (void)loadView {
  const auto content = [self content];
  __weak AutomaticPopup* weakSelf = self;
  NSMutableArray<NSView*>* views = [NSMutableArray array];
  [views addObject:PanelViews::label(BundleTexts::string(content.title), PanelViews::font(NSFontTextStyleHeadline),
                                     NSColor.labelColor)];
  // A profile may arrive while the popover is shown: render shows the note.
  _managedNote = hintLabel(TextCatalog::setByOrganization);
  [views addObject:_managedNote];

  _ruleSwitches = [NSMutableArray array];
  for (const auto& rule : content.rules) {
    const AutomaticRules::Rule which = rule.rule;
    NSButton* box = nil;
    NSView* row = [self switchRow:rule.toggle
                          control:&box
                           action:^(bool on) {
                             AutomaticPopup* strongSelf = weakSelf;
                             if (strongSelf) AutomaticPopupContent::setRule(which, on, *strongSelf->_automatic);
                           }];
    [_ruleSwitches addObject:box];
    [views addObject:row];
    if (which == AutomaticRules::Rule::apps) [views addObject:[self appEditor:content]];
    if (which == AutomaticRules::Rule::schedule) [views addObject:[self scheduleEditor:content]];
  }
  [views addObject:[self combinationRow:content]];
  if (content.stopWhenScreenLocks) {
    NSButton* box = nil;
    [views addObject:[self switchRow:*content.stopWhenScreenLocks
                             control:&box
                              action:^(bool on) {
                                AutomaticPopup* strongSelf = weakSelf;
                                if (strongSelf && strongSelf->_screenLock) {
                                  AutomaticPopupContent::setStopsWhenScreenLocks(on, *strongSelf->_screenLock);
                                  [strongSelf render];
                                }
                              }]];
    _screenLockSwitch = box;
  }
  [views addObject:hintLabel(content.commandLineNote)];

  self.view = PanelViews::popoverRoot(PanelViews::column(views, AutomaticPopupContent::sectionSpacing), inset,
                                      AutomaticPopupContent::width);
  _automaticChanged = _automatic->observe([weakSelf] { [weakSelf render]; });
  [self render];
}

// A checkbox with its hint under it, which is its help rather than an
// element of its own.
- (NSView*)switchRow:(const AutomaticPopupContent::Switch&)toggle
             control:(NSButton* __strong*)control
              action:(void (^)(bool on))action {
  NSButton* box = [NSButton checkboxWithTitle:BundleTexts::string(toggle.title) target:nil action:nil];
  [ActionHandler attachTo:box
                   action:^(id sender) {
                     action(static_cast<NSButton*>(sender).state == NSControlStateValueOn);
                   }];
  NSTextField* hint = hintLabel(toggle.hint);
  [hint setAccessibilityElement:NO];
  [box setAccessibilityHelp:hint.stringValue];
  *control = box;
  return PanelViews::column(@[ box, hint ], AutomaticPopupContent::rowSpacing);
}

- (NSView*)appEditor:(const AutomaticPopupContent&)content {
  __weak AutomaticPopup* weakSelf = self;
  _appList = PanelViews::column(@[], AutomaticPopupContent::rowSpacing);
  _addApp = [NSButton buttonWithTitle:BundleTexts::string(content.addApp) target:nil action:nil];
  _addApp.controlSize = NSControlSizeSmall;
  [ActionHandler attachTo:_addApp
                   action:^(id) {
                     [weakSelf chooseApp];
                   }];
  _appRefusal = hintLabel(LocalizedText::verbatim(""));
  _appRefusal.textColor = NSColor.systemRedColor;
  _appRefusal.hidden = YES;
  return PanelViews::column(@[ _appList, _addApp, _appRefusal ], AutomaticPopupContent::rowSpacing);
}

- (NSView*)scheduleEditor:(const AutomaticPopupContent&)content {
  __weak AutomaticPopup* weakSelf = self;
  const NSUserInterfaceLayoutDirection direction = content.layoutDirection == LayoutDirection::rightToLeft
                                                       ? NSUserInterfaceLayoutDirectionRightToLeft
                                                       : NSUserInterfaceLayoutDirectionLeftToRight;
  _days = [NSMutableArray array];
  for (const auto& day : content.days) {
    NSButton* toggle = [NSButton buttonWithTitle:BundleTexts::string(day.shortName) target:nil action:nil];
    [toggle setButtonType:NSButtonTypePushOnPushOff];
    toggle.controlSize = NSControlSizeSmall;
    [toggle setAccessibilityLabel:BundleTexts::string(day.fullName)];
    const Schedule::Weekday weekday = day.weekday;
    [ActionHandler attachTo:toggle
                     action:^(id sender) {
                       AutomaticPopup* strongSelf = weakSelf;
                       if (!strongSelf) return;
                       const bool on = static_cast<NSButton*>(sender).state == NSControlStateValueOn;
                       AutomaticPopupContent::setWeekday(weekday, on, *strongSelf->_automatic);
                     }];
    [_days addObject:toggle];
    _weekdays.push_back(weekday);
  }
  NSStackView* days = PanelViews::row(_days, 2);
  days.userInterfaceLayoutDirection = direction;

  _start = [self timePicker:^(int minutes) {
    AutomaticPopup* strongSelf = weakSelf;
    if (strongSelf) AutomaticPopupContent::setStart(minutes, *strongSelf->_automatic);
  }];
  _end = [self timePicker:^(int minutes) {
    AutomaticPopup* strongSelf = weakSelf;
    if (strongSelf) AutomaticPopupContent::setEnd(minutes, *strongSelf->_automatic);
  }];
  NSFont* body = PanelViews::font(NSFontTextStyleBody);
  NSTextField* from = PanelViews::label(BundleTexts::string(content.startLabel), body, NSColor.labelColor);
  NSTextField* to = PanelViews::label(BundleTexts::string(content.endLabel), body, NSColor.labelColor);
  [_start setAccessibilityLabel:from.stringValue];
  [_end setAccessibilityLabel:to.stringValue];
  NSStackView* times = PanelViews::row(@[ from, _start, to, _end ], 6);
  times.userInterfaceLayoutDirection = direction;
  return PanelViews::column(@[ days, times ], AutomaticPopupContent::rowSpacing);
}

- (NSDatePicker*)timePicker:(void (^)(int minutes))changed {
  NSDatePicker* picker = [[NSDatePicker alloc] init];
  picker.datePickerStyle = NSDatePickerStyleTextFieldAndStepper;
  picker.datePickerElements = NSDatePickerElementFlagHourMinute;
  picker.timeZone = [NSTimeZone timeZoneForSecondsFromGMT:0];
  picker.locale = [NSLocale localeWithLocaleIdentifier:BundleTexts::string(RunningAppLanguage::locale())];
  picker.controlSize = NSControlSizeSmall;
  [ActionHandler attachTo:picker
                   action:^(id sender) {
                     changed(minutesOf(static_cast<NSDatePicker*>(sender).dateValue));
                   }];
  return picker;
}

- (NSView*)combinationRow:(const AutomaticPopupContent&)content {
  __weak AutomaticPopup* weakSelf = self;
  NSTextField* title = PanelViews::label(BundleTexts::string(content.combinationTitle),
                                         PanelViews::font(NSFontTextStyleBody), NSColor.labelColor);
  _combinations = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
  for (const auto& choice : content.combinations) {
    [_combinations addItemWithTitle:BundleTexts::string(choice.label)];
    _combinationChoices.push_back(choice.combination);
  }
  [_combinations setAccessibilityLabel:title.stringValue];
  [ActionHandler attachTo:_combinations
                   action:^(id) {
                     AutomaticPopup* strongSelf = weakSelf;
                     if (!strongSelf) return;
                     const NSInteger index = strongSelf->_combinations.indexOfSelectedItem;
                     if (index < 0 || static_cast<std::size_t>(index) >= strongSelf->_combinationChoices.size()) return;
                     AutomaticPopupContent::choose(strongSelf->_combinationChoices[static_cast<std::size_t>(index)],
                                                   *strongSelf->_automatic);
                   }];
  return PanelViews::column(@[ title, _combinations ], AutomaticPopupContent::rowSpacing);
}

// Modeless, so the main thread never waits on it. The popover may close
// while the panel is up: the choice still reaches the controller.
- (void)chooseApp {
  NSOpenPanel* panel = [NSOpenPanel openPanel];
  panel.canChooseFiles = YES;
  panel.canChooseDirectories = NO;
  panel.allowsMultipleSelection = NO;
  AutomaticAppPanelFilter* filter = [[AutomaticAppPanelFilter alloc] init];
  panel.delegate = filter;
  const auto automatic = _automatic;
  __weak AutomaticPopup* weakSelf = self;
  [panel beginWithCompletionHandler:^(NSModalResponse result) {
    // The panel holds its delegate weakly; this block keeps it to the end.
    (void)filter;
    NSURL* url = panel.URL;
    if (result != NSModalResponseOK || !url || !url.fileSystemRepresentation) return;
    NSBundle* bundle = [NSBundle bundleWithURL:url];
    AutomaticPopupContent::ChosenBundle chosen{std::nullopt, std::nullopt, std::nullopt, url.fileSystemRepresentation};
    if (bundle) {
      if (bundle.bundleIdentifier.UTF8String) chosen.bundleIdentifier = bundle.bundleIdentifier.UTF8String;
      chosen.displayName = infoString(bundle, @"CFBundleDisplayName");
      chosen.bundleName = infoString(bundle, @"CFBundleName");
    }
    const auto refusal = AutomaticPopupContent::addChosenApp(chosen, *automatic);
    [weakSelf showRefusal:refusal];
  }];
}

- (void)showRefusal:(const std::optional<LocalizedText>&)refusal {
  _appRefusal.stringValue = refusal ? BundleTexts::string(*refusal) : @"";
  _appRefusal.hidden = !refusal;
  [self fitContent];
}

- (NSView*)appRow:(const AutomaticPopupContent::App&)app removable:(BOOL)removable {
  NSImage* icon = [NSWorkspace.sharedWorkspace iconForFile:BundleTexts::string(app.path)];
  icon.size = NSMakeSize(AutomaticPopupContent::appIconSize, AutomaticPopupContent::appIconSize);
  NSImageView* image = [NSImageView imageViewWithImage:icon];
  [image setAccessibilityElement:NO];
  NSTextField* name =
      PanelViews::label(BundleTexts::string(app.name), PanelViews::font(NSFontTextStyleBody), NSColor.labelColor);
  name.lineBreakMode = NSLineBreakByTruncatingMiddle;
  [name setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                 forOrientation:NSLayoutConstraintOrientationHorizontal];
  NSButton* remove = [NSButton buttonWithTitle:@"" target:nil action:nil];
  remove.image = PanelViews::symbol("minus.circle", NSFontTextStyleBody);
  remove.imagePosition = NSImageOnly;
  remove.bordered = NO;
  remove.enabled = removable;
  [remove setAccessibilityLabel:BundleTexts::string(app.removeLabel)];
  const std::string identifier = app.bundleIdentifier;
  __weak AutomaticPopup* weakSelf = self;
  [ActionHandler attachTo:remove
                   action:^(id) {
                     AutomaticPopup* strongSelf = weakSelf;
                     if (strongSelf) AutomaticPopupContent::removeApp(identifier, *strongSelf->_automatic);
                   }];
  return PanelViews::row(@[ image, name, remove ], 6);
}

- (void)render {
  requireMainThread("AutomaticPopup render");
  const auto content = [self content];
  for (std::size_t i = 0; i < content.rules.size() && i < _ruleSwitches.count; ++i) {
    _ruleSwitches[i].state = content.rules[i].toggle.isOn ? NSControlStateValueOn : NSControlStateValueOff;
  }
  for (NSView* row in [_appList.arrangedSubviews copy]) [row removeFromSuperview];
  if (content.apps.empty()) [_appList addArrangedSubview:hintLabel(content.noApps)];
  const BOOL changeable = !content.rulesAreForced;
  for (const auto& app : content.apps) [_appList addArrangedSubview:[self appRow:app removable:changeable]];
  _addApp.enabled = content.canAddApp;
  for (NSButton* box in _ruleSwitches) box.enabled = changeable;
  for (NSButton* day in _days) day.enabled = changeable;
  _start.enabled = changeable;
  _end.enabled = changeable;
  _combinations.enabled = changeable;
  _managedNote.hidden = !content.managedNote;
  for (std::size_t i = 0; i < content.days.size() && i < _days.count; ++i) {
    _days[i].state = content.days[i].isOn ? NSControlStateValueOn : NSControlStateValueOff;
  }
  _start.dateValue = dateAt(content.start);
  _end.dateValue = dateAt(content.end);
  for (std::size_t i = 0; i < _combinationChoices.size(); ++i) {
    if (_combinationChoices[i] == content.combination) [_combinations selectItemAtIndex:static_cast<NSInteger>(i)];
  }
  if (content.stopWhenScreenLocks) {
    _screenLockSwitch.state = content.stopWhenScreenLocks->isOn ? NSControlStateValueOn : NSControlStateValueOff;
    _screenLockSwitch.enabled = !content.stopWhenScreenLocks->isForced;
  }
  [self fitContent];
}

- (void)fitContent {
  [self.view layoutSubtreeIfNeeded];
  self.preferredContentSize = self.view.fittingSize;
}

@end
