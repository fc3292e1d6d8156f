#pragma once

#include "WireStretch.h"

#include <QList>
#include <QMap>
#include <QPainterPath>
#include <QPointF>
#include <QPointer>
#include <QString>
#include <QTransform>

class CCircuitEditor;
class CCircuitEditorElementItem;
class CCircuitEditorNodeItem;
class CCircuitEditorTextBox;
class ICircuitElementNode;
class ICircuitNode;
class QGraphicsItem;

/// Elements and text boxes on their way to another place, with their wires behind them: automatic
/// ones are routed anew, those laid by hand stretch. Every place is computed from where all was at
/// first, so that it doesn't matter in which steps the way is gone, and what is drawn on the way is
/// what comes. Changes items only, until it settles. Items may die meanwhile. All points are scene
/// points.
class ConnectedMove {
public:
    /// What Shift multiplies an arrow key's step by.
    static constexpr int FastFactor = 10;

    /// Takes the elements and the text boxes among the items.
    ConnectedMove(CCircuitEditor* editor, const QList<QGraphicsItem*>& items);

    /// Moves the items at once, with their wires. Does nothing and is false for an editor whose
    /// property MoveConnectedElements is off.
    static bool moveBy(CCircuitEditor* editor, const QList<QGraphicsItem*>& items,
                       const QPointF& step);

    // An element whose terminals have changed places by themselves, as by a rotation.
    static QMap<QString, QPointF> terminalPlaces(const CCircuitEditorElementItem* item);
    /// Leads the wires that were laid by hand from the terminals' old places to where they are.
    static void followTerminals(CCircuitEditorElementItem* item,
                                const QMap<QString, QPointF>& oldPlaces);

    /// Draws the items as if they were off the wires that lead to others.
    void comeOff();
    /// Moves the items to where they were at first and by the offset from there.
    void moveTo(const QPointF& offset);
    /// Turns the items by a quarter to the right about the point, or mirrors them left to right:
    /// what is drawn between them goes along as it is. Once, and in place of a move. The way that
    /// every point has gone.
    QTransform turn(const QPointF& center, bool isMirror);
    /// Puts all back.
    void putBack();
    /// Takes the items off the wires that they have come off, and joins their terminals to what
    /// they lie on. Asks before that makes one of two nets that have names; if the user refuses,
    /// all is put back, and the result is false.
    bool settle();

private:
    struct Member {
        QPointer<CCircuitEditorElementItem> element;
        QPointer<CCircuitEditorTextBox> textBox;
        QPointF start;
        // Of the element's boxes, which follow it by steps.
        QList<std::pair<QPointer<QObject>, QPointF>> boxes;
    };
    struct MovedTerminal {
        QPointer<CCircuitEditorElementItem> element;
        QString name;
        QPointF start;
    };
    /// A net that holds one of the terminals.
    struct Trail {
        // A key only: the net may be gone.
        ICircuitNode* node = nullptr;
        bool wasManual = false;
        bool isOff = false;
        QPainterPath path;
        QVector<MovedTerminal> moved;
        QVector<QPointF> fixed;
    };
    struct Join;

    static Trail trailOf(CCircuitEditor* editor, CCircuitEditorNodeItem* wire,
                         const QList<CCircuitEditorElementItem*>& movers);
    static void follow(CCircuitEditor* editor, const Trail& trail);
    static void putBack(CCircuitEditor* editor, const Trail& trail);
    void setPositions(const QPointF& offset);
    void turnElement(const Member& member, const QTransform& way, bool isMirror);
    void cut(const Trail& trail);
    QList<Join> joins() const;
    /// Whether no two named nets become one, or the user wants it.
    bool mayJoin(const QList<Join>& joins) const;
    void join(const Join& join);

    QPointer<CCircuitEditor> m_editor;
    QList<Member> m_members;
    QList<Trail> m_trails;
};
