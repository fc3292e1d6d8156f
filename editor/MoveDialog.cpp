#include "MoveDialog.h"

#include "ui_CMoveElementDialog.h"

#include <QDialog>
#include <QPointer>

QPoint askForDistance(QWidget* parent, const QString& title) {
    const QPointer<QDialog> dialog(new QDialog(parent));
    Ui_CMoveElementDialog form;
    form.setupUi(dialog);
    if (!title.isEmpty()) {
        dialog->setWindowTitle(title);
    }
    QPoint distance;
    if (dialog->exec() == QDialog::Accepted && dialog) {
        distance = {form.txtXDistance->value(), form.txtYDistance->value()};
    }
    delete dialog;
    return distance;
}
