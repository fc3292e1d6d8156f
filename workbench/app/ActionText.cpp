#include "ActionText.h"

#include <QMetaObject>

ActionText::ActionText(QAction* action, QObject* object, QByteArray method)
    : QObject(action),
      m_action(action),
      m_ownText(action->text()),
      m_object(object),
      m_method(std::move(method)) {}

void ActionText::refresh() {
    QString more;
    if (m_object) {
        QMetaObject::invokeMethod(m_object, m_method.constData(), Qt::DirectConnection,
                                  Q_RETURN_ARG(QString, more));
    }
    // A name may hold the sign that marks a key.
    more.replace(QLatin1Char('&'), QStringLiteral("&&"));
    m_action->setText(more.isEmpty() ? m_ownText : m_ownText + QLatin1Char(' ') + more);
}
