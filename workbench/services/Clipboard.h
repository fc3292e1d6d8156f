#pragma once

#include "IClipboard.h"

#include <QHash>
#include <QList>
#include <QObject>

/// What was copied since the program started, by context, the newest entry first: index 0 is what a
/// paste takes that asks for nothing else. Knows nothing of the system clipboard, of projects, or
/// of what the entries mean.
class Clipboard : public QObject, public IClipboard {
    Q_OBJECT
    Q_INTERFACES(IClipboard)

public:
    /// Of a context; the oldest entry makes room for the newest.
    static constexpr int MostEntries = 20;
    /// Side in pixels. Larger pictures are kept scaled down to it, because those of large groups
    /// would take more memory than all else that is kept.
    static constexpr int LargestPicture = 512;

    explicit Clipboard(QObject* parent = nullptr);

    /// Empty before the first context is known.
    QString activeContext() const { return m_active; }
    /// Removes the entries of the active context.
    void clear();

    QObject* containerObject() override { return this; }
    /// The first context is active at once. An empty name is no context.
    void addContext(const QString& context) override;
    /// Registers an unknown context.
    void setActiveContext(const QString& context) override;
    /// Lost if there is no context yet.
    void addData(ClipboardData data) override;
    int dataCount() override;
    /// An empty entry for an index out of range.
    ClipboardData data(int index) override;

signals:
    /// Another context is the active one.
    void activeContextChanged(QString context);
    /// An entry was added, or all are gone: indices name other entries than before.
    void entriesChanged(QString context);

private:
    QHash<QString, QList<ClipboardData>> m_entries;
    QString m_active;
};
