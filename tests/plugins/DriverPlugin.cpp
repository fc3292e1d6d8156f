// Drives the real program from within, where no hand can: Qt loads it as one of its generic
// plugins. It adds an element if VORTEL_DRIVER_ADD is set, calls the canvas's methods that
// VORTEL_DRIVER_CALL names, divided by commas, answers each message box with the button whose text
// is VORTEL_DRIVER_ANSWER, and prints a line of JSON when the window has come to rest anew or tells
// something.

#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitElementFactory.h"

#include <Plexa/ObjectIterator.h>

#include <QAbstractButton>
#include <QEvent>
#include <QGenericPlugin>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QStatusBar>
#include <QTimer>

#include <cstdio>

namespace {

template <class Interface>
Interface* service() {
    const Plexa::ObjectIterator iterator;
    for (QObject* object = iterator.firstObject(); object; object = iterator.nextObject()) {
        if (auto* found = qobject_cast<Interface*>(object)) {
            return found;
        }
    }
    return nullptr;
}

class Driver : public QObject {
    Q_OBJECT

public:
    explicit Driver(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* box = qobject_cast<QMessageBox*>(watched);
        auto* window = qobject_cast<QMainWindow*>(watched);
        if (box && event->type() == QEvent::Show) {
            QTimer::singleShot(0, box, [this, box] { answer(box); });
        } else if (window && event->type() == QEvent::Show) {
            QTimer::singleShot(0, window, [this, window] {
                act();
                const auto hear = [this, window](const QString& text) {
                    m_told.append(text);
                    report(window);
                };
                QObject::connect(window->statusBar(), &QStatusBar::messageChanged, this, hear);
                hear(window->statusBar()->currentMessage());
            });
        } else if (window && event->type() == QEvent::ModifiedChange) {
            report(window);
        }
        return false;
    }

private:
    void answer(QMessageBox* box) {
        m_asked.append(box->text());
        const QString wanted = qEnvironmentVariable("VORTEL_DRIVER_ANSWER");
        for (QAbstractButton* button : box->buttons()) {
            if (button->text().remove(QLatin1Char('&')) == wanted) {
                button->click();
            }
        }
    }

    void act() {
        if (qEnvironmentVariableIsSet("VORTEL_DRIVER_ADD")) {
            service<ICircuit>()->addElement(
                service<ICircuitElementFactory>()->createElement(QStringLiteral("Resistor.Basic")));
        }
        QObject* canvas = service<ICanvas>()->containerObject();
        // There is no pointer that what is pasted could hang at.
        canvas->setProperty("PlacePastedItems", false);
        for (const QByteArray& name : qgetenv("VORTEL_DRIVER_CALL").split(',')) {
            if (!name.isEmpty()) {
                QMetaObject::invokeMethod(canvas, name.constData(), Qt::DirectConnection);
            }
        }
    }

    void report(QMainWindow* window) {
        QTimer::singleShot(0, window, [this, window] {
            if (!window->isVisible()) {
                return;
            }
            const QJsonObject state = {{"title", window->windowTitle()},
                                       {"modified", window->isWindowModified()},
                                       {"elements", service<ICircuit>()->elementCount()},
                                       {"asked", m_asked},
                                       {"told", m_told}};
            std::puts(QJsonDocument(state).toJson(QJsonDocument::Compact).constData());
            std::fflush(stdout);
        });
    }

    QJsonArray m_asked;
    QJsonArray m_told;
};

}  // namespace

class DriverPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "DriverPlugin.json")

public:
    QObject* create(const QString&, const QString&) override { return new Driver(nullptr); }
};

#include "DriverPlugin.moc"
