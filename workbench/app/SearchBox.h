#pragma once

#include <QDialog>
#include <QIcon>
#include <QString>
#include <QVariant>
#include <QVector>

#include <functional>

class QLabel;
class QLineEdit;
class QListWidget;

/// A field and, under it, what fits the text in it. Up and Down move through the list while one
/// types, Return or a click chooses, Escape closes.
class SearchBox : public QDialog {
    Q_OBJECT

public:
    struct Hit {
        QIcon icon;
        QString text;
        QVariant data;
    };
    using Search = std::function<QVector<Hit>(const QString& text)>;

    SearchBox(const QString& prompt, Search search, QWidget* parent);

    /// Shows it with an empty field, near the point on the screen.
    void popUp(const QPoint& place);

signals:
    /// The cursor is on another hit; the data is invalid if there is none.
    void currentChanged(const QVariant& data);
    void chosen(const QVariant& data);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refresh();
    void choose();
    QVariant current() const;

    Search m_search;
    QLineEdit* m_field = nullptr;
    QLabel* m_nothing = nullptr;
    QListWidget* m_list = nullptr;
};
