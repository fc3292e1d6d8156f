#include "HeldMessages.h"

namespace {

QtMessageHandler outerHandler = nullptr;
QString firstWarning;

void hold(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtWarningMsg && type != QtCriticalMsg) {
        outerHandler(type, context, text);
    } else if (firstWarning.isEmpty()) {
        firstWarning = text;
    }
}

}  // namespace

HeldMessages::HeldMessages() {
    firstWarning.clear();
    outerHandler = qInstallMessageHandler(hold);
}

HeldMessages::~HeldMessages() {
    qInstallMessageHandler(outerHandler);
}

QString HeldMessages::first() const {
    return firstWarning;
}
