#include "ElementCaptions.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CircuitGeometry.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ItemTypes.h"
#include "PropertyLookup.h"

#include <Plexa/DataStore.h>

#include <QGraphicsScene>
#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace ElementCaptions {

namespace {

constexpr int PointSize = 8;
// Between the element and its boxes.
constexpr double Gap = 5;
// Beside a wire, and how far one runs straight out of a terminal.
constexpr double WireRoom = 3;
constexpr double ExitLength = 30;
// A little room, so that touching counts as covering.
constexpr double Touch = 1;

QRectF outlineOf(const QGraphicsItem* item) {
    return item->mapToScene(item->boundingRect()).boundingRect();
}

QRectF segmentRect(const QPointF& a, const QPointF& b) {
    return QRectF(a, b).normalized().adjusted(-WireRoom, -WireRoom, WireRoom, WireRoom);
}

/// What boxes should keep off, in squares, so that asking doesn't look at the whole drawing.
class Obstacles {
public:
    /// Of all that is drawn, but for the boxes of those items.
    explicit Obstacles(const CCircuitEditor* editor,
                       const QList<CCircuitEditorElementItem*>& without = {}) {
        QSet<const QGraphicsItem*> others;
        for (const CCircuitEditorElementItem* item : without) {
            for (const CCircuitElementPropertyTextBox* box : item->propertyTextBoxes()) {
                others.insert(box);
            }
        }
        for (const QGraphicsItem* item : editor->scene()->items()) {
            if (!others.contains(item)) {
                add(item);
            }
        }
    }
    void add(const QRectF& rect) {
        forSquares(rect, [this, &rect](const std::pair<int, int>& square) {
            m_rects[square].append(rect);
        });
    }
    QVector<QRectF> near(const QRectF& area) const {
        QVector<QRectF> found;
        forSquares(area, [this, &found](const std::pair<int, int>& square) {
            found += m_rects.value(square);
        });
        return found;
    }

private:
    static constexpr double Side = 200;
    static constexpr double Reach = 100000;

    template <class Visit>
    static void forSquares(const QRectF& whole, Visit visit) {
        // What lies beyond where a drawing can be is in nobody's way.
        const QRectF rect = whole.intersected(QRectF(-Reach, -Reach, 2 * Reach, 2 * Reach));
        if (rect.isNull()) {
            return;
        }
        for (int x = int(std::floor(rect.left() / Side)); x <= rect.right() / Side; ++x) {
            for (int y = int(std::floor(rect.top() / Side)); y <= rect.bottom() / Side; ++y) {
                visit({x, y});
            }
        }
    }
    void add(const QGraphicsItem* item) {
        switch (item->type()) {
            case ElementItemType:
                add(outlineOf(item));
                addExits(static_cast<const CCircuitEditorElementItem*>(item));
                break;
            case TextBoxItemType:
            case ElementPropertyTextBoxItemType:
                add(outlineOf(item));
                break;
            case NodeItemType:
                addWire(*static_cast<const CCircuitEditorNodeItem*>(item));
                break;
            default:
                break;
        }
    }
    /// Where wires will leave the element, if they don't yet: a strip for each side that has some,
    /// for what lies between two of them is soon run through.
    void addExits(const CCircuitEditorElementItem* item) {
        const QRectF outline = outlineOf(item);
        QMap<int, QRectF> strips;
        for (const QString& name :
             item->element() ? item->element()->elementNodeNames() : QStringList()) {
            const CCircuitEditorElementNodeItem* terminal = item->nodeItem(name);
            if (!terminal) {
                continue;
            }
            const QPointF from = terminal->mapToScene(QPointF(0, 0));
            const int exit = CircuitGeometry::exitDirection(from, outline);
            strips[exit] = strips.value(exit) | segmentRect(from, from + wayOut(exit));
        }
        for (const QRectF& strip : qAsConst(strips)) {
            add(strip);
        }
    }
    static QPointF wayOut(int exit) {
        switch (exit) {
            case CircuitGeometry::ExitRight:
                return {ExitLength, 0};
            case CircuitGeometry::ExitLeft:
                return {-ExitLength, 0};
            case CircuitGeometry::ExitUp:
                return {0, -ExitLength};
            case CircuitGeometry::ExitDown:
                return {0, ExitLength};
            default:
                return {};
        }
    }
    void addWire(const CCircuitEditorNodeItem& wire) {
        const QPainterPath path = wire.mapToScene(wire.internalShape());
        for (int i = 1; i < path.elementCount(); ++i) {
            if (path.elementAt(i).isLineTo()) {
                add(segmentRect(path.elementAt(i - 1), path.elementAt(i)));
            }
        }
    }

    QHash<std::pair<int, int>, QVector<QRectF>> m_rects;
};

QList<CCircuitElementPropertyTextBox*> addBoxes(CCircuitEditorElementItem* item) {
    ICircuitElement* element = item->element();
    auto* properties = qobject_cast<IEditableProperties*>(element->containerObject());
    QStringList wanted = element->desc()
                             ->info()
                             .value(QStringLiteral("#display"))
                             .toString()
                             .split(QLatin1Char(' '), Qt::SkipEmptyParts);
    wanted.prepend(QStringLiteral("Caption"));
    QList<CCircuitElementPropertyTextBox*> boxes;
    for (const QString& name : qAsConst(wanted)) {
        // A box without a text could not be seen.
        const bool isProperty = name == QLatin1String("Caption")
                                    ? !element->caption().isEmpty()
                                    : indexOfProperty(properties, name) >= 0;
        if (isProperty && !has(*item, name)) {
            boxes.append(makeBox(item->circuitEditor(), element, name));
        }
    }
    // Its size goes with it.
    QMetaObject::invokeMethod(item, "updatePropertyTextBoxTextFormats", Qt::DirectConnection);
    return boxes;
}

double coveredBy(const QRectF& rect, const QVector<QRectF>& obstacles) {
    double covered = 0;
    for (const QRectF& obstacle : obstacles) {
        const QRectF common = rect.adjusted(-Touch, -Touch, Touch, Touch) & obstacle;
        covered += common.width() * common.height();
    }
    return covered;
}

/// Puts the boxes in a column where there is room.
void place(const CCircuitEditorElementItem* item,
           const QList<CCircuitElementPropertyTextBox*>& boxes, Obstacles& obstacles) {
    QSizeF size(0, 0);
    for (const CCircuitElementPropertyTextBox* box : boxes) {
        const QSizeF one = box->boundingRect().size();
        size = QSizeF(std::max(size.width(), one.width()), size.height() + one.height());
    }
    const QRectF outline = outlineOf(item);
    const double reach = std::max(size.width(), size.height()) + 4 * Gap;
    const QRectF place =
        bestPlace(outline, size, obstacles.near(outline.adjusted(-reach, -reach, reach, reach)));
    double y = place.top();
    for (CCircuitElementPropertyTextBox* box : boxes) {
        const QSizeF one = box->boundingRect().size();
        // Toward the element, in a column beside it; else in its middle.
        double x = place.center().x() - one.width() / 2;
        if (place.left() >= outline.right()) {
            x = place.left();
        } else if (place.right() <= outline.left()) {
            x = place.right() - one.width();
        }
        box->setPos(CircuitGeometry::roundedPoint(QPointF(x, y)));
        obstacles.add(outlineOf(box));
        y += one.height();
    }
}

void add(CCircuitEditorElementItem* item, Obstacles& obstacles) {
    if (item->element()) {
        place(item, addBoxes(item), obstacles);
    }
}

}  // namespace

CCircuitElementPropertyTextBox* makeBox(CCircuitEditor* editor, ICircuitElement* element,
                                        const QString& property) {
    auto* box = new CCircuitElementPropertyTextBox(editor);
    box->setElementProperty(element, property);
    box->setBackgroundColor(Qt::transparent);
    QFont font = box->font();
    font.setPointSize(PointSize);
    box->setFont(font);
    if (editor->captionsNewElements() || editor->keepsTextStyles()) {
        // As it comes back from a file: as large as its text.
        box->setDrawnFont(box->font());
    }
    return box;
}

bool has(const CCircuitEditorElementItem& item, const QString& property) {
    const QList<CCircuitElementPropertyTextBox*> boxes = item.propertyTextBoxes();
    return std::any_of(boxes.begin(), boxes.end(),
                       [&property](const auto* box) { return box->propertyName() == property; });
}

void add(CCircuitEditorElementItem* item) {
    Obstacles obstacles(item->circuitEditor());
    add(item, obstacles);
}

void addToAll(CCircuitEditor* editor) {
    Obstacles obstacles(editor);
    ICircuit* circuit = editor->circuit();
    for (int i = 0; circuit && i < circuit->elementCount(); ++i) {
        if (CCircuitEditorElementItem* item = editor->elementItem(circuit->element(i))) {
            add(item, obstacles);
        }
    }
}

void keepClear(const QList<CCircuitEditorElementItem*>& items) {
    if (items.isEmpty() || !items.first()->circuitEditor()->captionsNewElements()) {
        return;
    }
    Obstacles obstacles(items.first()->circuitEditor(), items);
    for (const CCircuitEditorElementItem* item : items) {
        const QList<CCircuitElementPropertyTextBox*> boxes = item->propertyTextBoxes();
        bool isClear = true;
        for (const CCircuitElementPropertyTextBox* box : boxes) {
            const QRectF rect = outlineOf(box);
            isClear = isClear && coveredBy(rect, obstacles.near(rect)) == 0;
        }
        if (!isClear) {
            place(item, boxes, obstacles);
            continue;
        }
        for (const CCircuitElementPropertyTextBox* box : boxes) {
            obstacles.add(outlineOf(box));
        }
    }
}

QRectF bestPlace(const QRectF& outline, const QSizeF& size, const QVector<QRectF>& obstacles) {
    const double right = outline.right() + Gap;
    const double left = outline.left() - Gap - size.width();
    const double below = outline.bottom() + Gap;
    const double above = outline.top() - Gap - size.height();
    const double middleX = outline.center().x() - size.width() / 2;
    const double middleY = outline.center().y() - size.height() / 2;
    const QPointF beside[] = {{right, middleY}, {left, middleY}};
    const QPointF stacked[] = {{middleX, below}, {middleX, above}};
    QVector<QPointF> places;
    const bool isWide = outline.width() > outline.height();
    for (const QPointF& place : isWide ? stacked : beside) {
        places << place;
    }
    for (const QPointF& place : isWide ? beside : stacked) {
        places << place;
    }
    // Off the middle, to pass by a wire that leaves there, then at the corners.
    for (const double y : {above + size.height() / 2, below - size.height() / 2}) {
        places << QPointF(right, y) << QPointF(left, y);
    }
    for (const double y : {above, below}) {
        places << QPointF(right, y) << QPointF(left, y);
    }
    QRectF best;
    double least = -1;
    for (const QPointF& place : qAsConst(places)) {
        const QRectF rect(place, size);
        const double covered = coveredBy(rect, obstacles);
        if (least < 0 || covered < least) {
            least = covered;
            best = rect;
        }
    }
    return best;
}

}  // namespace ElementCaptions
