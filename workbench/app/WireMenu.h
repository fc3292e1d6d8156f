#pragma once

#include <QObject>

class ICircuitNode;
class QMenu;

/// Adds the application's own entries to the menu of a wire on the canvas. Knows the editor by its
/// signals and methods only.
class WireMenu : public QObject {
    Q_OBJECT

public:
    /// Not owned by `editor`: `parent` is the owner.
    WireMenu(QObject* editor, QObject* parent);

private slots:
    void addEntries(ICircuitNode* node, QMenu* menu);

private:
    QObject* m_editor;
};
