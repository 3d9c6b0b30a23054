#pragma once

namespace wakeloft {

// The reading direction of the app's interface; it decides which side of
// the menu-bar glyph the timer badge sits on.
enum class LayoutDirection { leftToRight, rightToLeft };

}  // namespace wakeloft
