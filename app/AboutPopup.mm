#import "AboutPopup.h"

#include "BundleTexts.h"
#include "GlyphImages.h"
#include "MainBundle.h"
#include "PanelViews.h"
#include "clock/SystemDateProvider.h"
#include "prefs/AboutInfo.h"
#include "prefs/SystemTimeZone.h"
#include "ui/AboutPopupContent.h"

using namespace wakeloft;

namespace {

constexpr CGFloat inset = 18;

}  // namespace

@implementation AboutPopup

- (instancetype)init {
  return [super initWithNibName:nil bundle:nil];
}

- (void)loadView {
  const auto content = AboutPopupContent::current(AboutInfo::fromInfoDictionary(MainBundle::infoDictionary()),
                                                  SystemDateProvider().now(), SystemTimeZone::current());

  // macOS text styles have fixed sizes: the glyph keeps its point size.
  NSImageView* glyph = [[NSImageView alloc] init];
  glyph.image = GlyphImages::awakeGlyph(content.glyph, AboutPopupContent::glyphPointSize);
  [glyph setAccessibilityElement:NO];

  NSMutableArray<NSView*>* lines = [NSMutableArray arrayWithObjects:glyph,
                                    PanelViews::label(BundleTexts::string(content.name),
                                                      PanelViews::font(NSFontTextStyleHeadline), NSColor.labelColor),
                                    nil];
  if (content.version) {
    [lines addObject:PanelViews::label(BundleTexts::string(*content.version),
                                       PanelViews::font(NSFontTextStyleSubheadline), NSColor.secondaryLabelColor)];
  }
  [lines addObject:PanelViews::label(BundleTexts::string(content.copyright), PanelViews::font(NSFontTextStyleFootnote),
                                     NSColor.labelColor)];

  NSStackView* stack = PanelViews::column(lines, 4);
  stack.alignment = NSLayoutAttributeCenterX;
  NSView* root = PanelViews::popoverRoot(stack, inset, std::nullopt);
  self.view = root;
  [root layoutSubtreeIfNeeded];
  self.preferredContentSize = root.fittingSize;
}

@end
