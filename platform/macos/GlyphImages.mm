#include "GlyphImages.h"

#import <CoreGraphics/CoreGraphics.h>

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <variant>
#include <vector>

namespace wakeloft {

namespace {

void replay(CGContextRef context, const GlyphDrawing& drawing) {
  CGContextSaveGState(context);
  CGContextTranslateCTM(context, drawing.origin().x, drawing.origin().y);
  CGContextScaleCTM(context, drawing.unitSize(), drawing.unitSize());
  CGContextSetLineJoin(context, kCGLineJoinRound);
  CGContextSetLineCap(context, kCGLineCapRound);
  CGContextSetGrayFillColor(context, 0, 1);
  CGContextSetGrayStrokeColor(context, 0, 1);
  CGContextBeginPath(context);
  for (const auto& operation : drawing.operations()) {
    std::visit(
        [&](const auto& op) {
          using Op = std::decay_t<decltype(op)>;
          if constexpr (std::is_same_v<Op, GlyphDrawing::MoveTo>) {
            CGContextMoveToPoint(context, op.to.x, op.to.y);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::LineTo>) {
            CGContextAddLineToPoint(context, op.to.x, op.to.y);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::CurveTo>) {
            CGContextAddCurveToPoint(context, op.control1.x, op.control1.y, op.control2.x, op.control2.y, op.to.x,
                                     op.to.y);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Ellipse>) {
            CGContextAddEllipseInRect(context, CGRectMake(op.in.x, op.in.y, op.in.width, op.in.height));
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::ClosePath>) {
            CGContextClosePath(context);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Stroke>) {
            CGContextSetLineWidth(context, op.width);
            CGContextStrokePath(context);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Fill>) {
            CGContextFillPath(context);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Erase>) {
            // The path is not part of the graphics state, so it survives the save.
            CGContextSaveGState(context);
            CGContextSetBlendMode(context, kCGBlendModeClear);
            CGContextFillPath(context);
            CGContextRestoreGState(context);
          }
        },
        operation);
  }
  CGContextBeginPath(context);
  CGContextRestoreGState(context);
}

void drawPart(CGContextRef context, const GlyphImage::Part& part, NSImage* symbol, double deviceScale) {
  const NSRect frame = NSMakeRect(part.frame.x, part.frame.y, part.frame.width, part.frame.height);
  const auto drawing = part.drawing(deviceScale);
  if (part.blend == GlyphImage::Part::Blend::erase) {
    if (drawing) {
      CGContextSaveGState(context);
      CGContextSetBlendMode(context, kCGBlendModeDestinationOut);
      replay(context, *drawing);
      CGContextRestoreGState(context);
    } else if (symbol) {
      [symbol drawInRect:frame fromRect:NSZeroRect operation:NSCompositingOperationDestinationOut fraction:1.0];
    }
    return;
  }
  // A transparency layer of its own keeps what the part clears inside itself
  // (the outlined vessel clears its handle's ring out of its body).
  CGContextBeginTransparencyLayer(context, nullptr);
  if (drawing) {
    replay(context, *drawing);
  } else if (symbol) {
    [symbol drawInRect:frame fromRect:NSZeroRect operation:NSCompositingOperationSourceOver fraction:1.0];
  }
  CGContextEndTransparencyLayer(context);
}

}  // namespace

std::optional<GlyphSize> GlyphImages::SystemSymbolMetrics::size(const SystemSymbol& symbol) const {
  NSImage* image = symbolImage(symbol);
  if (!image) return std::nullopt;
  const NSSize size = image.size;
  return GlyphSize{size.width, size.height};
}

NSImage* GlyphImages::symbolImage(const SystemSymbol& symbol) {
  NSString* name = [[NSString alloc] initWithBytes:symbol.name.data()
                                            length:symbol.name.size()
                                          encoding:NSUTF8StringEncoding];
  if (!name) return nil;
  NSImage* image = [NSImage imageWithSystemSymbolName:name accessibilityDescription:nil];
  if (!image) return nil;
  NSImageSymbolConfiguration* configuration =
      [NSImageSymbolConfiguration configurationWithPointSize:symbol.pointSize weight:NSFontWeightRegular];
  return [image imageWithSymbolConfiguration:configuration];
}

NSImage* GlyphImages::image(const GlyphImage& description) {
  if (description.isEmpty()) return [[NSImage alloc] initWithSize:NSZeroSize];

  // Symbols are looked up once, here; the handler may run later on any
  // thread and only draws what it was given.
  NSMutableArray* symbols = [NSMutableArray arrayWithCapacity:description.parts.size()];
  for (const auto& part : description.parts) {
    const auto* symbol = std::get_if<SystemSymbol>(&part.content);
    NSImage* image = symbol ? symbolImage(*symbol) : nil;
    [symbols addObject:image ? image : [NSNull null]];
  }
  const GlyphImage drawn = description;

  NSImage* image = [NSImage imageWithSize:NSMakeSize(description.size.width, description.size.height)
                                  flipped:NO
                           drawingHandler:^BOOL(NSRect) {
                             CGContextRef context = NSGraphicsContext.currentContext.CGContext;
                             if (!context) return NO;
                             const CGSize pixel = CGContextConvertSizeToDeviceSpace(context, CGSizeMake(1, 1));
                             const double deviceScale = std::max(std::fabs(pixel.width), std::fabs(pixel.height));
                             for (size_t i = 0; i < drawn.parts.size(); ++i) {
                               id symbol = symbols[i];
                               drawPart(context, drawn.parts[i], [symbol isKindOfClass:NSImage.class] ? symbol : nil,
                                        deviceScale);
                             }
                             return YES;
                           }];
  // `template` is a C++ keyword, so the property is set through its setter.
  [image setTemplate:description.isTemplate];
  return image;
}

NSImage* GlyphImages::awakeGlyph(const AwakeGlyph& glyph, double pointSize) {
  return image(glyph.image(pointSize, SystemSymbolMetrics()));
}

NSImage* GlyphImages::menuBarIcon(const MenuBarIcon& icon, LayoutDirection layoutDirection) {
  return image(icon.image(layoutDirection, SystemSymbolMetrics()));
}

}  // namespace wakeloft
