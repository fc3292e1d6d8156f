#include "ColorAction.h"

#include "CCircuitEditorTextBox.h"
#include "TextBoxColors.h"

#include <QMenu>
#include <QPixmap>

namespace {

// In pixels; the menu scales it down.
constexpr int SwatchSize = 64;

}  // namespace

ColorAction::ColorAction(const QString& text, const QColor& color, QObject* parent)
    : QAction(text, parent), m_color(color) {
    QPixmap swatch(SwatchSize, SwatchSize);
    swatch.fill(color);
    setIcon(QIcon(swatch));
    connect(this, SIGNAL(triggered()), this, SLOT(onTriggered()));
}

void ColorAction::onTriggered() {
    emit triggered(m_color);
}

void createColorOptionsMenu(QMenu* parent, const QString& title,
                            const QMap<QString, QVariant>& colors, CCircuitEditorTextBox* box,
                            const char* slot) {
    if (colors.isEmpty()) {
        return;
    }
    QMenu* menu = parent->addMenu(title);
    for (auto it = colors.begin(); it != colors.end(); ++it) {
        auto* action = new ColorAction(it.key(), TextBoxColors::named(it.value().toString()), menu);
        menu->addAction(action);
        QObject::connect(action, SIGNAL(triggered(QColor)), box, slot);
    }
}
