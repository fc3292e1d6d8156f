#include "MoveDialog.h"

#include "ui_CMoveElementDialog.h"

#include <QDialog>
#include <QPointer>

std::optional<QPoint> askForDistance(QWidget* parent, const QString& title) {
    const QPointer<QDialog> dialog(new QDialog(parent));
    Ui_CMoveElementDialog form;
    form.setupUi(dialog);
    if (!title.isEmpty()) {
        dialog->setWindowTitle(title);
    }
    std::optional<QPoint> distance;
    if (dialog->exec() == QDialog::Accepted && dialog) {
        distance = QPoint(form.txtXDistance->value(), form.txtYDistance->value());
    }
    delete dialog;
    return distance;
}
