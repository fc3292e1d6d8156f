#include "Clipboard.h"

#include <QPixmap>

#include <algorithm>

namespace {

QIcon keptIcon(const QIcon& icon) {
    constexpr QSize Limit(Clipboard::LargestPicture, Clipboard::LargestPicture);
    const QList<QSize> sizes = icon.availableSizes();
    const bool fits = std::all_of(sizes.begin(), sizes.end(),
                                  [&](const QSize& size) { return size.boundedTo(Limit) == size; });
    return fits ? icon : QIcon(icon.pixmap(Limit));
}

}  // namespace

Clipboard::Clipboard(QObject* parent) : QObject(parent) {}

void Clipboard::clear() {
    if (dataCount() > 0) {
        m_entries[m_active].clear();
        emit entriesChanged(m_active);
    }
}

void Clipboard::addContext(const QString& context) {
    if (context.isEmpty() || m_entries.contains(context)) {
        return;
    }
    m_entries.insert(context, {});
    if (m_active.isEmpty()) {
        setActiveContext(context);
    }
}

void Clipboard::setActiveContext(const QString& context) {
    if (context.isEmpty() || context == m_active) {
        return;
    }
    m_active = context;
    addContext(context);
    emit activeContextChanged(context);
}

void Clipboard::addData(ClipboardData data) {
    if (m_active.isEmpty()) {
        return;
    }
    data.icon = keptIcon(data.icon);
    QList<ClipboardData>& entries = m_entries[m_active];
    entries.prepend(data);
    while (entries.size() > MostEntries) {
        entries.removeLast();
    }
    emit entriesChanged(m_active);
}

int Clipboard::dataCount() {
    return m_entries.value(m_active).size();
}

ClipboardData Clipboard::data(int index) {
    return m_entries.value(m_active).value(index);
}
