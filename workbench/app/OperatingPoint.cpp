#include "OperatingPoint.h"

#include "Analysis.h"
#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "ElementDescription.h"
#include "ICanvas.h"
#include "ICircuitEditorExt.h"
#include "PlotContent.h"
#include "SimulationPart.h"
#include "Workbench.h"

#include <QAction>
#include <QEvent>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsView>
#include <QPainter>
#include <QPointer>
#include <QTransform>

#include <cmath>

namespace {

/// Apart from the inks of wires, and readable on paper.
const QColor NetColor(0xb0, 0x3a, 0x00);
const QColor ElementColor(0x00, 0x69, 0x5c);
constexpr int LetterHeight = 10;
/// How far a value stands from a terminal, and from an element, in scene units.
constexpr double BesideTerminal = 20;
constexpr double AboveWire = 9;
constexpr double BesideElement = 28;
constexpr double BesideUpright = 2;
constexpr double LetterWidth = 6.4;
/// Smaller letters nobody reads.
constexpr double SmallestScale = 0.5;
/// What is left of nothing by computing.
constexpr double Nothing = 1e-15;
constexpr int RestMs = 300;

QFont labelFont() {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(LetterHeight);
    return font;
}

SimulationSetup operatingPointSetup() {
    SimulationSetup setup;
    setup.setActive(QStringLiteral("op"));
    return setup;
}

QRectF sceneFrame(const QGraphicsItem* item) {
    return item->sceneBoundingRect();
}

/// At the terminal that leaves to a side, if there is one: above its wire is room.
bool netPlace(CircuitNode* net, ICircuitEditorExt* items, QPointF* place) {
    bool found = false;
    for (CircuitElementNode* terminal : net->terminals()) {
        QGraphicsItem* tip = items->itemFor(terminal);
        QGraphicsItem* element = items->itemFor(terminal->owner());
        if (!tip || !element) {
            continue;
        }
        const QPointF end = tip->scenePos();
        const QPointF way = end - sceneFrame(element).center();
        const bool isLevel = std::abs(way.x()) > std::abs(way.y());
        if (isLevel || !found) {
            const double side = way.x() < 0 ? -1 : 1;
            *place = isLevel ? end + QPointF(side * BesideTerminal, -AboveWire)
                             : end + QPointF(BesideTerminal, way.y() < 0 ? -AboveWire : AboveWire);
            found = true;
        }
        if (isLevel) {
            return true;
        }
    }
    return found;
}

/// Its main current; empty for a type that has none.
QString currentOf(CircuitElement* element) {
    const QMap<QString, QString>& results = element->description()->data().spice.results;
    for (const char* name : {"i", "ic", "id", "ia"}) {
        if (results.contains(QLatin1String(name))) {
            return QLatin1String(name);
        }
    }
    return {};
}

/// Captions stand above and below what lies, and on the right of what stands.
QPointF elementPlace(CircuitElement* element, const QGraphicsItem* item, int letters,
                     ICircuitEditorExt* items) {
    const QRectF frame = sceneFrame(item);
    if (element->terminals().size() == 2) {
        const double half = letters * LetterWidth / 2;
        return frame.height() > frame.width()
                   ? QPointF(frame.left() - BesideUpright - half, frame.center().y())
                   : QPointF(frame.center().x(), frame.bottom() + BesideElement);
    }
    // Below, away from a wire that leaves there.
    double side = 0;
    for (CircuitElementNode* terminal : element->terminals()) {
        const QGraphicsItem* tip = items->itemFor(terminal);
        if (tip && tip->scenePos().y() >= frame.bottom() - 1) {
            side = tip->scenePos().x() < frame.center().x() ? 1 : -1;
        }
    }
    return {frame.center().x() + side * BesideElement / 2, frame.bottom() + AboveWire};
}

QString valueText(double value, const QString& unit) {
    return shortNumber(std::abs(value) < Nothing ? 0 : value, unit);
}

QVector<ValueLabel> labelsOf(Circuit& circuit, const Results& results, ICircuitEditorExt* items) {
    QVector<ValueLabel> labels;
    QString reason;
    for (int i = 0; i < circuit.nodeCount(); ++i) {
        CircuitNode* net = CircuitNode::from(circuit.node(i));
        Curve curve;
        QPointF place;
        if (net->name() == QLatin1String("gnd") ||
            !results.netCurve(net->name(), &curve, &reason) || curve.values.isEmpty() ||
            !netPlace(net, items, &place)) {
            continue;
        }
        const QString unit = net->type() == QLatin1String("e")   ? QStringLiteral("V")
                             : net->type() == QLatin1String("t") ? QStringLiteral("K")
                                                                 : QString();
        labels.append({place, valueText(curve.values.last().real(), unit), NetColor});
    }
    for (int i = 0; i < circuit.elementCount(); ++i) {
        CircuitElement* element = CircuitElement::from(circuit.element(i));
        const QString current = currentOf(element);
        QGraphicsItem* item = items->itemFor(element);
        Curve curve;
        if (current.isEmpty() || !item ||
            !results.elementCurve(element, current, &curve, &reason) || curve.values.isEmpty()) {
            continue;
        }
        const QString text = valueText(curve.values.last().real(), curve.unit);
        labels.append({elementPlace(element, item, text.size(), items), text, ElementColor});
    }
    return labels;
}

}  // namespace

ValueItems::ValueItems(QGraphicsScene* scene, const QVector<ValueLabel>& labels) {
    for (const ValueLabel& label : labels) {
        auto item = std::make_unique<QGraphicsSimpleTextItem>(label.text);
        item->setFont(labelFont());
        item->setBrush(label.color);
        item->setPos(label.place - item->boundingRect().center());
        item->setZValue(1000);
        scene->addItem(item.get());
        m_items.push_back(std::move(item));
    }
}

ValueItems::~ValueItems() = default;

std::unique_ptr<ValueItems> operatingPointItems(const Workbench& workbench, QString* reason) {
    SimulationPart* part = workbench.simulation();
    auto* items = qobject_cast<ICircuitEditorExt*>(workbench.editorWidget());
    Simulator simulator;
    // Nobody could end one that finds no operating point.
    constexpr int MostSeconds = 10;
    simulator.setTimeLimit(MostSeconds);
    if (!simulator.runToEnd(part->circuit(), part->models(), operatingPointSetup(), reason)) {
        return nullptr;
    }
    return std::make_unique<ValueItems>(
        workbench.canvas()->graphicsScene(),
        labelsOf(part->circuit(), simulator.runs().first().results, items));
}

/// Lies over the viewport and lets everything through but what is seen. Not in the scene, so that
/// whoever asks what the drawing holds, or how large it is, finds nothing of it.
class OperatingPoint::Overlay : public QWidget {
public:
    Overlay(QGraphicsView* view, const OperatingPoint* values)
        : QWidget(view), m_view(view), m_values(values) {
        setObjectName(QStringLiteral("operatingPoint"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        view->viewport()->installEventFilter(this);
        setGeometry(view->viewport()->geometry());
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        m_painted = m_view->viewportTransform();
        if (m_painted.m11() < SmallestScale) {
            return;
        }
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setTransform(m_painted);
        painter.setFont(labelFont());
        const QRectF page = m_painted.inverted().mapRect(QRectF(rect()));
        for (const ValueLabel& label : m_values->labels()) {
            if (!page.contains(label.place)) {
                continue;
            }
            QRectF frame = painter.fontMetrics().boundingRect(label.text);
            frame.moveCenter(label.place);
            QColor paper(Qt::white);
            paper.setAlpha(200);
            painter.fillRect(frame, paper);
            painter.setPen(label.color);
            painter.drawText(frame, Qt::AlignCenter | Qt::TextDontClip, label.text);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Resize || event->type() == QEvent::Move) {
            setGeometry(m_view->viewport()->geometry());
        } else if (event->type() == QEvent::Paint && isVisible() &&
                   m_view->viewportTransform() != m_painted) {
            update();
        }
        return QWidget::eventFilter(watched, event);
    }

private:
    QGraphicsView* m_view;
    const OperatingPoint* m_values;
    QTransform m_painted;
};

OperatingPoint::OperatingPoint(const Workbench& workbench, QAction* action, QObject* parent)
    : QObject(parent), m_workbench(workbench), m_action(action) {
    m_overlay = new Overlay(workbench.canvas()->graphicsView(), this);
    m_rest.setSingleShot(true);
    m_rest.setInterval(RestMs);
    connect(&m_rest, &QTimer::timeout, this, &OperatingPoint::run);
    connect(&m_simulator, &Simulator::finished, this, &OperatingPoint::ended);
    connect(workbench.editorWidget(), SIGNAL(projectPartModified()), this, SLOT(drawingChanged()));
    action->setCheckable(true);
    connect(action, &QAction::toggled, this, &OperatingPoint::setShown);
    // Whoever runs just this analysis wants to see it.
    SimulationPart* part = workbench.simulation();
    connect(part, &SimulationPart::resultsChanged, this, [this, part] {
        const Simulator& run = part->simulator();
        if (run.runs().isEmpty()) {
            clear();
        } else if (run.analysis() == QLatin1String("op")) {
            m_action->setChecked(true);
        }
    });
}

OperatingPoint::~OperatingPoint() {
    delete m_overlay;
}

void OperatingPoint::setShown(bool shown) {
    m_overlay->setVisible(shown);
    clear();
    if (shown) {
        run();
    } else {
        m_rest.stop();
        m_simulator.cancel();
    }
}

void OperatingPoint::drawingChanged() {
    // Values of what was there before would mislead.
    clear();
    if (m_action->isChecked()) {
        m_rest.start();
    }
}

void OperatingPoint::run() {
    if (m_simulator.isRunning()) {
        m_rest.start();
        return;
    }
    SimulationPart* part = m_workbench.simulation();
    QString reason;
    if (part->circuit().elementCount() > 0 &&
        !m_simulator.start(part->circuit(), part->models(), operatingPointSetup(), &reason)) {
        emit failed(reason);
    }
}

void OperatingPoint::ended(const QString& error) {
    if (!m_action->isChecked() || m_rest.isActive()) {
        return;
    }
    if (!error.isEmpty()) {
        emit failed(error);
        return;
    }
    auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench.editorWidget());
    m_labels =
        labelsOf(m_workbench.simulation()->circuit(), m_simulator.runs().first().results, items);
    m_overlay->update();
    emit labelsChanged();
}

void OperatingPoint::clear() {
    if (!m_labels.isEmpty()) {
        m_labels.clear();
        m_overlay->update();
        emit labelsChanged();
    }
}
