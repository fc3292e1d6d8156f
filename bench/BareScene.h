#pragma once

#include <QGraphicsScene>
#include <QGraphicsView>

class CCircuitEditor;

/// The drawing of an editor once more, out of Qt's own items: what this costs is the limit that the
/// editor is measured against. An element is its outline, for files, or its symbol, for the screen;
/// a terminal a disc that is its child; a wire a path. Pens and brushes are the original's. There
/// is no grid and no index.
class BareScene {
public:
    enum Elements { Outlines, Symbols };

    BareScene(const CCircuitEditor& original, Elements elements);

    QGraphicsScene scene;
    QGraphicsView view;
};
