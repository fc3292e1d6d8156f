#pragma once

class ICanvas;

/// What is drawn on the canvas goes into files and pictures, so its colours are the canvas's own
/// and not those of the user's desktop.
namespace CanvasPalette {

/// Before any text is put on a canvas.
void prepare();
void apply(ICanvas* canvas);

}  // namespace CanvasPalette
