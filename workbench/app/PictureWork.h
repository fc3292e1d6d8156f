#pragma once

#include <QObject>

/// Tells of the steps of the pictures that the editor writes as long as this lives, and gives a
/// picture up with the work that it is part of. See `LongWork`.
class PictureWork : public QObject {
    Q_OBJECT

public:
    explicit PictureWork(QObject* editor);

private slots:
    void goOn();

private:
    QObject* m_editor;
};
