#pragma once

#include <QColor>
#include <QDropEvent>
#include <QLibraryInfo>
#include <QList>
#include <QMetaProperty>
#include <QMouseEvent>
#include <QPen>
#include <QTextFormat>
#include <QTextStream>
#include <QVariant>

#include <memory>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#else
#include <QHashSeed>
#include <QStringDecoder>
#endif

class QTreeWidgetItem;

/// What differs between the Qt series, in one place.
namespace QtSeries {

/// A pen whose width is left unsaid: cosmetic, so that it adds nothing to an item's bounds. Newer
/// series would make it one unit wide.
inline QPen hairline(const QColor& color) {
    QPen pen(color);
    pen.setWidth(0);
    return pen;
}

inline QPen hairline() {
    return hairline(Qt::black);
}

/// On the screen.
inline QPoint globalPosition(const QMouseEvent& event) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return event.globalPos();
#else
    return event.globalPosition().toPoint();
#endif
}

/// In the widget's coordinates.
inline QPointF position(const QHoverEvent& event) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return event.posF();
#else
    return event.position();
#endif
}

inline QPoint position(const QDropEvent& event) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return event.pos();
#else
    return event.position().toPoint();
#endif
}

/// At a place of its widget that lies at the same place on the screen.
inline std::unique_ptr<QHoverEvent> hoverEvent(QEvent::Type type, const QPointF& place) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return std::make_unique<QHoverEvent>(type, place, place);
#else
    return std::make_unique<QHoverEvent>(type, place, place, place);
#endif
}

/// As QTreeWidget::mimeData takes them.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
using TreeItems = const QList<QTreeWidgetItem*>;
#else
using TreeItems = const QList<QTreeWidgetItem*>&;
#endif

inline QString fontFamily(const QTextCharFormat& format) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return format.fontFamily();
#else
    return format.fontFamilies().toStringList().value(0);
#endif
}

inline void setFontFamily(QTextCharFormat* format, const QString& family) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    format->setFontFamily(family);
#else
    format->setFontFamilies({family});
#endif
}

/// What the class says; in the older series an object may say otherwise.
inline bool isStored(const QMetaProperty& property, const QObject* object) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return property.isStored(object);
#else
    Q_UNUSED(object)
    return property.isStored();
#endif
}

/// Into the type with the number; false if it can't be.
inline bool convert(QVariant* value, int type) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return value->convert(type);
#else
    return value->convert(QMetaType(type));
#endif
}

/// No character that the stream can't encode: it would be written as a number.
inline void encodeAll(QTextStream* stream) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    stream->setCodec("UTF-8");
#else
    stream->setEncoding(QStringConverter::Utf8);
#endif
}

/// False for bytes that aren't UTF-8.
inline bool decodeUtf8(const QByteArray& bytes, QString* text) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QTextCodec::ConverterState state;
    *text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
#else
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    *text = decode(bytes);
    return !decode.hasError();
#endif
}

/// Where Qt's own translations are.
inline QString translationFolder() {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#endif
}

/// The same order in every hash of every run.
inline void fixHashOrder() {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    qSetGlobalQHashSeed(0);
#else
    QHashSeed::setDeterministicGlobalSeed();
#endif
}

}  // namespace QtSeries
