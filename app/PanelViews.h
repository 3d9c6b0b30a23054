#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <optional>
#include <string_view>

#include "ui/PanelAction.h"
#include "ui/PanelControls.h"

NS_ASSUME_NONNULL_BEGIN

namespace wakeloft {

// The AppKit pieces the panel and its popovers are built from: labels in the
// system's text styles, buttons and switches bound to their actions, and
// marked footnotes. Texts come from the bundle's tables. Main thread only.
namespace PanelViews {

using Perform = std::function<void(const PanelAction&)>;

NSFont* font(NSFontTextStyle style);
// A system symbol sized for the text style; nil when the system has no symbol
// of that name.
NSImage* _Nullable symbol(std::string_view name, NSFontTextStyle style);

NSTextField* label(NSString* text, NSFont* font, NSColor* color);
// Wraps within `width`. Not selectable, so the keyboard passes over it.
NSTextField* wrappingLabel(NSString* text, NSFont* font, NSColor* color, CGFloat width);

NSButton* pushButton(const PanelButton& button, NSControlSize size, const Perform& perform);
// A borderless button in the link colour, in footnote size.
NSButton* linkButton(const PanelButton& button, const Perform& perform);

// The title on the leading side, the switch on the trailing one. The switch
// is returned through `control`, so that its state can be set again.
NSView* switchRow(const PanelSwitch& toggle, NSControlSize size, CGFloat width, const Perform& perform,
                  NSSwitch* _Nullable* _Nullable control);
// The switch's state as the content has it.
void setState(NSSwitch* control, const PanelSwitch& toggle);

// A marked footnote: the symbol in a box of the note symbol's width, then
// the text, wrapping, and the link under it if there is one.
NSView* note(const PanelNote& note, NSColor* color, CGFloat width, const Perform& perform);

NSBox* divider();
NSStackView* column(NSArray<NSView*>* views, CGFloat spacing);
NSStackView* row(NSArray<NSView*>* views, CGFloat spacing);

// A popover's root view in the app's layout direction, holding `content`
// inset by `inset` on every side; as wide as `width` when one is given,
// otherwise as wide as the content.
NSView* popoverRoot(NSStackView* content, CGFloat inset, std::optional<CGFloat> width);

// The first control in the view that the keyboard can reach, if any.
NSView* _Nullable firstKeyView(NSView* view);

}  // namespace PanelViews
}  // namespace wakeloft

NS_ASSUME_NONNULL_END
