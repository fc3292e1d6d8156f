#include "WindowTest.h"

#include "ICircuitElementFactory.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QScreen>

namespace {

constexpr const char* Schemes[] = {"file", "http", "https"};

}  // namespace

UrlCatcher::UrlCatcher() {
    for (const char* scheme : Schemes) {
        QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
    }
}

UrlCatcher::~UrlCatcher() {
    for (const char* scheme : Schemes) {
        QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }
}

void WindowTest::SetUp() {
    QString error;
    ASSERT_TRUE(workbench.start(QStringLiteral(VORTEL_BIN_DIR "/libcircuiteditor.so"), window.get(),
                                &error))
        << qPrintable(error);
    ASSERT_TRUE(window->build(&error)) << qPrintable(error);
    EXPECT_LE(window->width(), QGuiApplication::primaryScreen()->availableSize().width());
    window->resize(1200, 800);
    window->show();
    QApplication::setActiveWindow(window.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    view()->setFocus();
    QApplication::processEvents();
}

QAction* WindowTest::action(const char* id) {
    auto* found = window->findChild<QAction*>(QLatin1String(id));
    EXPECT_NE(found, nullptr) << id;
    return found;
}

void WindowTest::open(const QString& file) {
    QString message;
    EXPECT_TRUE(window->openFile(file, &message));
    EXPECT_EQ(message, QString());
}

QByteArray WindowTest::drawing() {
    QByteArray text;
    QMetaObject::invokeMethod(view(), "describe", Q_RETURN_ARG(QByteArray, text));
    return text;
}

CircuitElement* WindowTest::element(const char* name) {
    for (int i = 0; i < circuit()->elementCount(); ++i) {
        if (circuit()->element(i)->name() == QLatin1String(name)) {
            return CircuitElement::from(circuit()->element(i));
        }
    }
    return nullptr;
}

void WindowTest::addResistor() {
    auto* factory = qobject_cast<ICircuitElementFactory*>(
        workbench.object("CServicesComponent.elementFactory"));
    circuit()->addElement(factory->createElement("Resistor.Basic"));
}

void WindowTest::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(view(), key, modifiers);
    QApplication::processEvents();
}

void WindowTest::click(QPointF place) {
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, view()->mapFromScene(place));
}

void WindowTest::doubleClick(QPointF place) {
    const QPoint point = view()->mapFromScene(place);
    click(place);
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, {}, point);
    QTest::mouseRelease(view()->viewport(), Qt::LeftButton, {}, point);
    QApplication::processEvents();
}

void WindowTest::rightClick(const QPoint& viewportPlace) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, viewportPlace,
                            view()->viewport()->mapToGlobal(viewportPlace));
    QApplication::sendEvent(view()->viewport(), &event);
}

void WindowTest::answer(DialogDriver& dialogs, const char* button) {
    dialogs.queue([button](QWidget* box) {
        for (auto* candidate : box->findChildren<QAbstractButton*>()) {
            if (candidate->text().remove('&') == QLatin1String(button)) {
                candidate->click();
                return;
            }
        }
        FAIL() << "no button " << button;
    });
}
