#pragma once

#include "ClipboardData.h"
#include "IClipboardWidget.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

class Clipboard;
class QAction;
class QLabel;
class QListWidget;

/// The clipboard's history: the entries of the active context, the newest on top. A click or Return
/// chooses the entry that pastes take until something new is copied. The highlighted row is the one
/// that is chosen; the frame around a row is only where the keyboard is.
class ClipboardWidget : public QWidget, public IClipboardWidget {
    Q_OBJECT
    Q_INTERFACES(IClipboardWidget)

public:
    explicit ClipboardWidget(QWidget* parent = nullptr);

    /// Not owned; may go before the panel does.
    void setClipboard(Clipboard* clipboard);
    /// Index of the entry chosen in the active context; -1 if none is.
    int chosenIndex() const;

    QObject* containerObject() override { return this; }

signals:
    /// The entry was chosen. An empty one with the index -1 tells that no entry is chosen any more.
    void dataClicked(QString context, ClipboardData data, int index);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void choose(int index);
    void dropChoice(const QString& context);
    void rebuild();
    /// Shows which entry is chosen and what that means.
    void showChoice();

    QPointer<Clipboard> m_clipboard;
    /// By context; without an entry where none is chosen.
    QHash<QString, int> m_chosen;
    QLabel* m_hint = nullptr;
    QListWidget* m_list = nullptr;
    QAction* m_clear = nullptr;
};
