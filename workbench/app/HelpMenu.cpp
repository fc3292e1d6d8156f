#include "HelpMenu.h"

#include "HelpWindow.h"
#include "IAboutData.h"
#include "KeysPage.h"
#include "MainWindow.h"
#include "Places.h"
#include "Workbench.h"

#include <QCoreApplication>
#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

HelpMenu::HelpMenu(const Workbench& workbench, MainWindow* window)
    : QObject(window), m_workbench(workbench), m_window(window) {}

void HelpMenu::showUserGuide() {
    if (!m_guide) {
        m_guide = new HelpWindow(tr("User Guide"), m_window);
        m_guide->setObjectName(QStringLiteral("guideWindow"));
    }
    const QString file = Places::data(QStringLiteral("docs/user-guide.md"));
    if (!m_guide->showMarkdown(file)) {
        QMessageBox::information(m_window, tr("User Guide"), tr("%1: cannot be read").arg(file));
    }
}

void HelpMenu::showKeys() {
    if (!m_keys) {
        m_keys = new HelpWindow(tr("Keys"), m_window);
        m_keys->setObjectName(QStringLiteral("keysWindow"));
    }
    m_keys->showHtml(keysPage(*m_window->menuBar(),
                              m_workbench.guiSection(QStringLiteral("gestures")).toList()));
}

void HelpMenu::showAbout() {
    QString text =
        tr("<h3>%1 %2</h3><p>Draws circuits, with everything that an editor plug-in "
           "needs around it.</p>")
            .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion());
    QObject* component = m_workbench.object(QStringLiteral("CCircuitEditorComponent.controller"));
    if (auto* about = qobject_cast<IAboutData*>(component)) {
        text += tr("<p><b>%1 %2</b><br>%3<br>%4</p>")
                    .arg(about->productName(), about->version(), about->shortDescription(),
                         about->license());
    }
    QMessageBox::about(m_window, tr("About"), text + tr("<p>Built on Qt %1.</p>").arg(qVersion()));
}

void HelpMenu::fillExamples(QMenu* menu) {
    const QDir folder(Places::data(QStringLiteral("examples")));
    for (const QString& name :
         folder.entryList({QStringLiteral("*.vprj"), QStringLiteral("*.ckt")}, QDir::Files)) {
        QAction* entry = menu->addAction(QFileInfo(name).completeBaseName());
        connect(entry, &QAction::triggered, m_window,
                [this, file = folder.absoluteFilePath(name)] { m_window->openExample(file); });
    }
}
