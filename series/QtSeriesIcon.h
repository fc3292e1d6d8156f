#pragma once

#include <QIcon>
#include <QIconEngine>

namespace QtSeries {

/// Stands for an icon whose pictures derived classes change.
class IconProxy : public QIconEngine {
public:
    explicit IconProxy(const QIcon& icon) : m_icon(icon) {}

    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return m_icon.actualSize(size, mode, state);
    }
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) const override {
        return m_icon.availableSizes(mode, state);
    }
    void virtual_hook(int id, void* data) override {
        if (id == QIconEngine::IsNullHook) {
            *static_cast<bool*>(data) = m_icon.isNull();
        } else {
            QIconEngine::virtual_hook(id, data);
        }
    }
#else
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
        return m_icon.availableSizes(mode, state);
    }
    bool isNull() override {
        return m_icon.isNull();
    }
#endif

protected:
    /// Of so many pixels, on every screen.
    QPixmap picture(const QSize& size, QIcon::Mode mode, QIcon::State state) const {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        return m_icon.pixmap(size, mode, state);
#else
        return m_icon.pixmap(size, 1, mode, state);
#endif
    }

private:
    QIcon m_icon;
};

}  // namespace QtSeries
