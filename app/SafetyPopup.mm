#import "SafetyPopup.h"

#include <vector>

#import "ActionHandler.h"
#include "BundleTexts.h"
#include "PanelViews.h"
#include "RunningAppLanguage.h"
#include "base/MainThread.h"
#include "base/Observation.h"
#include "ui/SafetyPopupContent.h"

using namespace wakeloft;

namespace {

constexpr CGFloat inset = 14;

NSTextField* hintLabel(const LocalizedText& text) {
  return PanelViews::wrappingLabel(BundleTexts::string(text), PanelViews::font(NSFontTextStyleFootnote),
                                   NSColor.secondaryLabelColor, SafetyPopupContent::width - 2 * inset);
}

}  // namespace

@implementation SafetyPopup {
  std::shared_ptr<LidAwakeController> _lid;
  std::shared_ptr<DeepwakeAutomationConsent> _consent;
  Subscription _lidChanged;
  Subscription _consentChanged;
  NSPopUpButton* _floors;
  std::vector<int> _floorPercents;
  // In the content's order of switches, then the automation switch; each
  // with the line shown while a profile sets it.
  NSMutableArray<NSButton*>* _switches;
  NSMutableArray<NSTextField*>* _managedNotes;
  NSTextField* _floorManagedNote;
}

- (instancetype)initWithLid:(std::shared_ptr<LidAwakeController>)lid
                    consent:(std::shared_ptr<DeepwakeAutomationConsent>)consent {
  self = [super initWithNibName:nil bundle:nil];
  if (self) {
    _lid = std::move(lid);
    _consent = std::move(consent);
  }
  return self;
}

- (SafetyPopupContent)content {
  return SafetyPopupContent::current(*_lid, RunningAppLanguage::locale(), _consent.get());
}

// The layout never changes; render only sets the values.
- (void)loadView {
  const auto content = [self content];
  __weak SafetyPopup* weakSelf = self;

  NSTextField* title =
      PanelViews::label(BundleTexts::string(content.title), PanelViews::font(NSFontTextStyleHeadline), NSColor.labelColor);
  NSTextField* floorTitle = PanelViews::label(BundleTexts::string(content.floorTitle),
                                              PanelViews::font(NSFontTextStyleBody), NSColor.labelColor);
  _floors = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
  for (const auto& floor : content.floors) {
    [_floors addItemWithTitle:BundleTexts::string(floor.label)];
    _floorPercents.push_back(floor.percent);
  }
  [_floors setAccessibilityLabel:BundleTexts::string(content.floorTitle)];
  [ActionHandler attachTo:_floors
                   action:^(id) {
                     SafetyPopup* strongSelf = weakSelf;
                     if (!strongSelf) return;
                     const NSInteger index = strongSelf->_floors.indexOfSelectedItem;
                     if (index < 0 || static_cast<std::size_t>(index) >= strongSelf->_floorPercents.size()) return;
                     SafetyPopupContent::chooseFloor(strongSelf->_floorPercents[static_cast<std::size_t>(index)],
                                                     *strongSelf->_lid);
                   }];
  NSMutableArray<NSView*>* views =
      [NSMutableArray arrayWithArray:@[ title, PanelViews::row(@[ floorTitle, _floors ], 8), hintLabel(content.floorHint) ]];
  _floorManagedNote = hintLabel(content.managedNote);
  [views addObject:_floorManagedNote];

  _switches = [NSMutableArray array];
  _managedNotes = [NSMutableArray array];
  for (const auto& row : content.switches) [views addObject:[self switchRow:row managedNote:content.managedNote]];
  // Heat closes the guardrails; whether scripts may turn Deepwake on is apart.
  [views addObject:hintLabel(content.heatNote)];
  if (content.automation) [views addObject:[self switchRow:*content.automation managedNote:content.managedNote]];

  self.view = PanelViews::popoverRoot(PanelViews::column(views, SafetyPopupContent::sectionSpacing), inset,
                                      SafetyPopupContent::width);

  _lidChanged = _lid->observe([weakSelf] { [weakSelf render]; });
  // A weak reference of its own: one read twice could differ.
  __weak SafetyPopup* weakRenderer = self;
  if (_consent) _consentChanged = _consent->observe([weakRenderer] { [weakRenderer render]; });
  [self render];
}

// A checkbox with its hint under it, kept in `_switches`, and the managed
// note kept in `_managedNotes`.
- (NSView*)switchRow:(const SafetyPopupContent::Switch&)row managedNote:(const LocalizedText&)managedNote {
  __weak SafetyPopup* weakSelf = self;
  NSButton* box = [NSButton checkboxWithTitle:BundleTexts::string(row.title) target:nil action:nil];
  const SafetyPopupContent::Setting setting = row.setting;
  [ActionHandler attachTo:box
                   action:^(id sender) {
                     SafetyPopup* strongSelf = weakSelf;
                     if (!strongSelf) return;
                     const bool on = static_cast<NSButton*>(sender).state == NSControlStateValueOn;
                     SafetyPopupContent::set(setting, on, *strongSelf->_lid, strongSelf->_consent.get());
                   }];
  // The line under the switch is its help, not an element of its own.
  NSTextField* hint = hintLabel(row.hint);
  [hint setAccessibilityElement:NO];
  [box setAccessibilityHelp:hint.stringValue];
  NSTextField* managed = hintLabel(managedNote);
  [_switches addObject:box];
  [_managedNotes addObject:managed];
  return PanelViews::column(@[ box, hint, managed ], SafetyPopupContent::rowSpacing);
}

- (void)render {
  requireMainThread("SafetyPopup render");
  const auto content = [self content];
  for (std::size_t i = 0; i < _floorPercents.size(); ++i) {
    if (_floorPercents[i] == content.chosenFloor) [_floors selectItemAtIndex:static_cast<NSInteger>(i)];
  }
  // A profile may arrive or go while the popover is open.
  _floors.enabled = !content.isFloorForced;
  _floorManagedNote.hidden = !content.isFloorForced;
  auto rows = content.switches;
  if (content.automation) rows.push_back(*content.automation);
  for (std::size_t i = 0; i < rows.size() && i < _switches.count && i < _managedNotes.count; ++i) {
    _switches[i].state = rows[i].isOn ? NSControlStateValueOn : NSControlStateValueOff;
    _switches[i].enabled = !rows[i].isForced;
    _managedNotes[i].hidden = !rows[i].isForced;
  }
  [self.view layoutSubtreeIfNeeded];
  self.preferredContentSize = self.view.fittingSize;
}

@end
