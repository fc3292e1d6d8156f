#include "EmptyHint.h"

#include "ICanvas.h"
#include "ICircuit.h"
#include "ProjectManager.h"
#include "Workbench.h"

#include <QEvent>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QTimer>

#include <algorithm>
#include <functional>

namespace {

constexpr int LargerBy = 2;  // points
constexpr int Margin = 20;
const QColor Grey(0x70, 0x70, 0x70);

}  // namespace

EmptyHint::EmptyHint(const Workbench& workbench)
    : QLabel(workbench.canvas()->graphicsView()->viewport()), m_workbench(workbench) {
    setObjectName(QStringLiteral("emptyHint"));
    setText(
        tr("Click an element at the left, or press A and type its name\n"
           "W lays wires; F5 simulates\n"
           "Help > Examples opens finished circuits"));
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    QFont larger = font();
    larger.setPointSize(larger.pointSize() + LargerBy);
    setFont(larger);
    QPalette grey = palette();
    grey.setColor(QPalette::WindowText, Grey);
    setPalette(grey);
    setForegroundRole(QPalette::WindowText);
    parentWidget()->installEventFilter(this);
    QObject* circuit = workbench.circuit()->containerObject();
    connect(circuit, SIGNAL(elementAdded(ICircuitElement*)), this, SLOT(schedule()));
    connect(circuit, SIGNAL(elementRemoved(ICircuitElement*)), this, SLOT(schedule()));
    connect(workbench.editorWidget(), SIGNAL(toolChanged()), this, SLOT(schedule()));
    connect(workbench.projectManager(), &ProjectManager::modifiedChanged, this,
            &EmptyHint::schedule);
    refresh();
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        schedule();
    }
    return QLabel::eventFilter(watched, event);
}

void EmptyHint::schedule() {
    // A file that is opened adds many at once.
    if (!m_scheduled) {
        m_scheduled = true;
        QTimer::singleShot(0, this, &EmptyHint::refresh);
    }
}

void EmptyHint::refresh() {
    m_scheduled = false;
    const QList<QGraphicsItem*> items = m_workbench.canvas()->graphicsScene()->items();
    setVisible(std::none_of(items.begin(), items.end(), std::mem_fn(&QGraphicsItem::isVisible)));
    const QRect room = parentWidget()->rect().adjusted(Margin, Margin, -Margin, -Margin);
    const int height = std::min(heightForWidth(room.width()), room.height());
    setGeometry(room.x(), room.center().y() - height / 2, room.width(), height);
}
