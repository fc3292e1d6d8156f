#pragma once

#include "Simulator.h"

#include <QColor>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QVector>

#include <memory>
#include <vector>

class QAction;
class QGraphicsItem;
class QGraphicsScene;
class QPainter;
class Workbench;

/// What a net or an element has at rest, as the drawing shows it.
struct ValueLabel {
    /// Its centre, in scene units.
    QPointF place;
    QString text;
    QColor color;
};

/// The values as items of the drawing, for pictures: they are there as long as this object is.
class ValueItems {
public:
    ValueItems(QGraphicsScene* scene, const QVector<ValueLabel>& labels);
    ~ValueItems();
    ValueItems(const ValueItems&) = delete;
    ValueItems& operator=(const ValueItems&) = delete;

private:
    std::vector<std::unique_ptr<QGraphicsItem>> m_items;
};

/// Computes the operating point and puts it into the drawing. Null, with the reason, if there is
/// none.
std::unique_ptr<ValueItems> operatingPointItems(const Workbench& workbench, QString* reason);

/// Shows the operating point over the canvas while the action is ticked, and computes it anew when
/// the drawing has changed. Nothing of it is in the drawing.
class OperatingPoint : public QObject {
    Q_OBJECT

public:
    /// `parent` is the window.
    OperatingPoint(const Workbench& workbench, QAction* action, QObject* parent);
    ~OperatingPoint() override;

    /// Empty while nothing is shown.
    const QVector<ValueLabel>& labels() const { return m_labels; }

signals:
    /// One sentence.
    void failed(const QString& reason);
    void labelsChanged();

private slots:
    void drawingChanged();

private:
    class Overlay;

    void setShown(bool shown);
    void run();
    void ended(const QString& error);
    void clear();

    const Workbench& m_workbench;
    QAction* m_action;
    Simulator m_simulator;
    QTimer m_rest;
    QVector<ValueLabel> m_labels;
    // Of the view, which may die first.
    QPointer<QWidget> m_overlay;
};
