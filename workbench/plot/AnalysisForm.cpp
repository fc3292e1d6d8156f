#include "AnalysisForm.h"

#include "Analysis.h"
#include "EngineeringNumber.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QLineEdit>

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("Simulation", text);
}

}  // namespace

AnalysisForm::AnalysisForm(const AnalysisType& type, QWidget* parent)
    : QWidget(parent), m_type(type) {
    auto* layout = new QFormLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const AnalysisField& field : type.fields) {
        const QString unit = QString::fromUtf8(field.unit);
        const QString label = translated(field.label);
        QWidget* widget = makeField(field);
        widget->setObjectName(
            QStringLiteral("%1.%2").arg(QLatin1String(type.name), QLatin1String(field.name)));
        m_fields.insert(QLatin1String(field.name), widget);
        layout->addRow(unit.isEmpty() ? label : QStringLiteral("%1 (%2)").arg(label, unit), widget);
    }
}

QWidget* AnalysisForm::makeField(const AnalysisField& field) {
    if (field.kind == AnalysisField::Choice) {
        auto* box = new QComboBox;
        box->addItems(QString::fromLatin1(field.choices).split(QLatin1Char('|')));
        connect(box, QOverload<int>::of(&QComboBox::activated), this, &AnalysisForm::edited);
        return box;
    }
    auto* line = new QLineEdit;
    if (field.optional) {
        line->setPlaceholderText(tr("none"));
    }
    connect(line, &QLineEdit::textChanged, this, [line, field] { mark(line, field); });
    connect(line, &QLineEdit::editingFinished, this, &AnalysisForm::edited);
    return line;
}

void AnalysisForm::mark(QLineEdit* line, const AnalysisField& field) {
    const QString text = line->text().trimmed();
    bool fits = !text.isEmpty() || field.optional;
    if (field.kind == AnalysisField::Number && !text.isEmpty()) {
        EngineeringNumber::parse(text, &fits);
    }
    // Red on white, whatever the palette.
    line->setStyleSheet(
        fits ? QString() : QStringLiteral("QLineEdit { background: #ffd8d8; color: #a00000; }"));
    line->setToolTip(fits ? QString() : tr("A number such as 4.7k, 10u or 1M is expected"));
}

QString AnalysisForm::text(const QString& field) const {
    QWidget* widget = m_fields.value(field);
    if (const auto* box = qobject_cast<QComboBox*>(widget)) {
        return box->currentText();
    }
    return qobject_cast<QLineEdit*>(widget)->text().trimmed();
}

void AnalysisForm::showValues(const SimulationSetup& setup) {
    for (auto it = m_fields.begin(); it != m_fields.end(); ++it) {
        const QString value = setup.value(QLatin1String(m_type.name), it.key());
        if (value == text(it.key())) {
            continue;
        }
        if (auto* box = qobject_cast<QComboBox*>(it.value())) {
            box->setCurrentText(value);
        } else {
            qobject_cast<QLineEdit*>(it.value())->setText(value);
        }
    }
}

void AnalysisForm::store(SimulationSetup* setup) const {
    for (auto it = m_fields.begin(); it != m_fields.end(); ++it) {
        setup->setValue(QLatin1String(m_type.name), it.key(), text(it.key()));
    }
}
