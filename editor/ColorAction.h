#pragma once

#include <QAction>
#include <QColor>
#include <QMap>
#include <QVariant>

class CCircuitEditorTextBox;
class QMenu;

/// A menu entry that stands for one colour.
class ColorAction : public QAction {
    Q_OBJECT

public:
    ColorAction(const QString& text, const QColor& color, QObject* parent);

signals:
    void triggered(QColor color);

private slots:
    void onTriggered();

private:
    QColor m_color;
};

/// Adds a submenu with an entry for each colour, by label; none for no colours. Choosing one calls
/// the slot of the box, given by `SLOT()`, which takes a `QColor`.
void createColorOptionsMenu(QMenu* parent, const QString& title,
                            const QMap<QString, QVariant>& colors, CCircuitEditorTextBox* box,
                            const char* slot);
