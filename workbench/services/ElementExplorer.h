#pragma once

#include "IElementExplorer.h"

#include <QIcon>
#include <QVector>
#include <QWidget>

class QLineEdit;
class QMenu;
class QTreeWidget;
class QTreeWidgetItem;

/// The palette of element types: a tree grouped by library, with a filter above it. Typing in the
/// filter chooses the first type that matches; arrow keys move on from there.
class ElementExplorer : public QWidget, public IElementExplorer {
    Q_OBJECT
    Q_INTERFACES(IElementExplorer)

public:
    struct Entry {
        /// Complete type name, "Element.Library".
        QString type;
        QString label;
        QString library;
        QString description;
        QIcon icon;
    };

    explicit ElementExplorer(QWidget* parent = nullptr);

    /// Replaces the content; libraries come in the order of their first entry.
    void setEntries(const QVector<Entry>& entries);

    QObject* containerObject() override { return this; }
    QString selectedElementName() override;

signals:
    void elementRightClicked(QString name, QMenu* menu);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void applyFilter(const QString& text);
    void showMenu(const QPoint& position);

    QLineEdit* m_filter = nullptr;
    QTreeWidget* m_tree = nullptr;
};
