#include "NameRegistry.h"

QString NameRegistry::lowestFree(const QString& prefix) {
    int& number = m_lowest[prefix];
    number = qMax(number, 1);
    while (m_uses.contains(prefix + QString::number(number))) {
        ++number;
    }
    return prefix + QString::number(number);
}

void NameRegistry::take(const QString& name) {
    ++m_uses[name];
}

void NameRegistry::release(const QString& name) {
    const auto use = m_uses.find(name);
    if (use == m_uses.end()) {
        return;
    }
    if (--use.value() > 0) {
        return;
    }
    m_uses.erase(use);
    for (auto it = m_lowest.begin(); it != m_lowest.end(); ++it) {
        if (!name.startsWith(it.key())) {
            continue;
        }
        bool isNumber = false;
        const int number = QStringView(name).mid(it.key().size()).toInt(&isNumber);
        if (isNumber && number >= 1 && number < it.value()) {
            it.value() = number;
        }
    }
}
