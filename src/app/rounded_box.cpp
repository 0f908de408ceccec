#include "app/rounded_box.h"

namespace quorbel {

void drawRoundedBox(const Cairo::RefPtr<Cairo::Context>& context, const Rgba& fill,
                    const Rgba& outline, double x, double y, double width, double height,
                    double radius) {
  if (width == 0.0 || height == 0.0) return;
  const double right = x + width;
  const double bottom = y + height;
  const double radiusX = radius > width / 2 ? width / 2 : radius;
  const double radiusY = radius > height / 2 ? height / 2 : radius;
  // both control points of a corner's curve lie on the corner itself
  const auto curveAround = [&](double cornerX, double cornerY, double endX, double endY) {
    context->curve_to(cornerX, cornerY, cornerX, cornerY, endX, endY);
  };
  context->begin_new_path();
  context->move_to(x, y + radiusY);
  curveAround(x, y, x + radiusX, y);
  context->line_to(right - radiusX, y);
  curveAround(right, y, right, y + radiusY);
  context->line_to(right, bottom - radiusY);
  curveAround(right, bottom, right - radiusX, bottom);
  context->line_to(x + radiusX, bottom);
  curveAround(x, bottom, x, bottom - radiusY);
  context->close_path();
  context->set_source_rgba(fill.red, fill.green, fill.blue, fill.alpha);
  context->fill_preserve();
  context->set_source_rgba(outline.red, outline.green, outline.blue, outline.alpha);
  context->stroke();
}

}  // namespace quorbel
