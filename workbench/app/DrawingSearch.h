#pragma once

#include "SearchBox.h"

#include <QObject>

class QGraphicsItem;
class Workbench;

/// Finds elements, nets and texts of the drawing by what they are called, and shows them. Knows the
/// editor by interface only.
class DrawingSearch : public QObject {
    Q_OBJECT

public:
    /// `window` owns it.
    DrawingSearch(const Workbench& workbench, QWidget* window);

    void open();

private:
    QVector<SearchBox::Hit> find(const QString& text) const;
    /// Selects and marks what `find` gave, and brings it to the middle; nothing if it is gone.
    void show(const QVariant& hit);
    void mark(QGraphicsItem* item);

    const Workbench& m_workbench;
    SearchBox* m_box;
};
