#include "NetlistDialog.h"

#include "NetlistType.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFontDatabase>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr QSize UsualSize(640, 420);

}  // namespace

NetlistDialog::NetlistDialog(const QString& text, QWidget* parent)
    : QDialog(parent), m_text(new QPlainTextEdit), m_verdict(new QLabel) {
    setWindowTitle(tr("Text netlist"));
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setTabChangesFocus(true);
    m_verdict->setObjectName(QStringLiteral("verdict"));
    m_verdict->setTextFormat(Qt::PlainText);
    m_verdict->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    QPushButton* load = buttons->addButton(tr("&Load File..."), QDialogButtonBox::ActionRole);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("The pins of the first .subckt become the terminals.")));
    layout->addWidget(m_text, 1);
    layout->addWidget(m_verdict);
    layout->addWidget(buttons);
    resize(UsualSize);
    connect(m_text, &QPlainTextEdit::textChanged, this, &NetlistDialog::check);
    connect(load, &QPushButton::clicked, this, &NetlistDialog::loadFile);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_text->setPlainText(text);
    // What is pasted takes its place.
    m_text->selectAll();
    check();
}

QString NetlistDialog::text() const {
    return m_text->toPlainText();
}

void NetlistDialog::check() {
    ElementTypeData data;
    QString reason;
    const bool fits = NetlistType::describe(text(), &data, &reason);
    QStringList pins;
    for (const TerminalData& terminal : qAsConst(data.terminals)) {
        pins.append(terminal.name);
    }
    m_verdict->setText(
        fits ? tr("%1 with the terminals %2").arg(data.label, pins.join(QLatin1String(", ")))
             : tr("This is no netlist of a sub-circuit: %1.").arg(reason));
    m_ok->setEnabled(fits);
}

void NetlistDialog::loadFile() {
    const QString name = QFileDialog::getOpenFileName(
        this, tr("Load netlist"), QString(),
        tr("Netlists (*.cir *.sub *.lib *.mod *.net *.sp *.txt);;All files (*)"));
    if (name.isEmpty()) {
        return;
    }
    QFile file(name);
    if (file.open(QIODevice::ReadOnly)) {
        m_text->setPlainText(QString::fromUtf8(file.readAll()));
    } else {
        QMessageBox::information(this, tr("Cannot open"),
                                 QStringLiteral("%1: %2").arg(name, file.errorString()));
    }
}
