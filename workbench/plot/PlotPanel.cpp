#include "PlotPanel.h"

#include "Circuit.h"
#include "CurveColors.h"
#include "CurvePlot.h"
#include "ICircuitOutputVariable.h"
#include "PendingFile.h"
#include "PlotPicture.h"
#include "SimulationPart.h"

#include <QAction>
#include <QEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QSplitter>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

enum Column { Name, ValueA, ValueB, Difference };

constexpr int IconSize = 12;
/// Of the width, for the list with its values.
constexpr double LargestShare = 0.5;

QIcon colorIcon(const QColor& color) {
    QPixmap icon(IconSize, IconSize);
    icon.fill(color);
    return QIcon(icon);
}

}  // namespace

PlotPanel::PlotPanel(SimulationPart* simulation, QWidget* parent)
    : QWidget(parent),
      m_simulation(simulation),
      m_halves(new QSplitter(Qt::Horizontal)),
      m_stack(new QSplitter(Qt::Vertical)),
      m_list(new QTreeWidget),
      m_reading(new QLabel),
      m_message(new QLabel) {
    auto* bar = new QToolBar;
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto add = [bar](const QString& text, const QString& name, const QString& tip) {
        QAction* action = bar->addAction(text);
        action->setObjectName(name);
        action->setToolTip(tip);
        return action;
    };
    connect(add(tr("Fit"), QStringLiteral("plotFit"), tr("Show all curves whole (double click)")),
            &QAction::triggered, this, &PlotPanel::fit);
    m_cursorAction =
        add(tr("Cursors"), QStringLiteral("plotCursors"), tr("Two lines to drag, and differences"));
    m_cursorAction->setCheckable(true);
    connect(m_cursorAction, &QAction::toggled, this, &PlotPanel::showCursors);
    m_logAction = add(tr("Log X"), QStringLiteral("plotLogX"), tr("Logarithmic abscissa"));
    m_logAction->setCheckable(true);
    connect(m_logAction, &QAction::triggered, this, &PlotPanel::setXLog);
    m_logYAction =
        add(tr("Log Y"), QStringLiteral("plotLogY"), tr("Logarithmic ordinates, where any are"));
    m_logYAction->setCheckable(true);
    connect(m_logYAction, &QAction::triggered, this, &PlotPanel::setYLog);
    connect(add(tr("CSV..."), QStringLiteral("plotCsv"), tr("Save the values of all curves")),
            &QAction::triggered, this, &PlotPanel::exportCsv);
    connect(add(tr("SVG..."), QStringLiteral("plotSvg"), tr("Save what is seen as a picture")),
            &QAction::triggered, this, &PlotPanel::exportSvg);
    bar->addSeparator();
    bar->addWidget(m_reading);

    m_list->setAccessibleName(tr("Curves"));
    m_list->setHeaderLabels({tr("Curve"), tr("A"), tr("B"), tr("B − A")});
    m_list->setRootIsDecorated(false);
    m_list->setToolTip(tr("A tick shows the curve, a double click its net in the drawing"));
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->header()->setStretchLastSection(false);
    connect(m_list, &QTreeWidget::itemChanged, this, &PlotPanel::listItemChanged);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this,
            [this](QTreeWidgetItem* item) { pick(m_list->indexOfTopLevelItem(item)); });
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);

    m_halves->addWidget(m_stack);
    m_halves->addWidget(m_list);
    m_halves->setStretchFactor(0, 4);
    m_halves->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(m_halves, 1);
    layout->addWidget(m_message);

    connect(simulation, &SimulationPart::resultsChanged, this, &PlotPanel::showResults);
    Circuit* circuit = &simulation->circuit();
    connect(circuit, &Circuit::outputVariableAdded, this, &PlotPanel::scheduleRefresh);
    connect(circuit, &Circuit::outputVariableEdited, this, &PlotPanel::scheduleRefresh);
    connect(circuit, &Circuit::outputVariableRemoved, this, &PlotPanel::scheduleRefresh);
    setContent({}, false);
}

PlotPanel::~PlotPanel() = default;

void PlotPanel::showResults() {
    setContent(plotContent(*m_simulation), false);
}

void PlotPanel::scheduleRefresh() {
    // A variable that is removed tells so while it is still there.
    if (!m_scheduled) {
        m_scheduled = true;
        QMetaObject::invokeMethod(
            this, [this] { refresh(); }, Qt::QueuedConnection);
    }
}

void PlotPanel::refresh() {
    m_scheduled = false;
    if (!m_simulation->simulator().runs().isEmpty()) {
        setContent(plotContent(*m_simulation), true);
    }
}

void PlotPanel::setContent(PlotContent content, bool keepsView) {
    const QVector<QRectF> before = views();
    const QStringList quantities = m_content.quantities();
    if (keepsView) {
        content.xLog = m_logAction->isChecked();
        content.yLog = m_logYAction->isChecked();
    } else {
        m_history.clear();
    }
    m_content = std::move(content);
    qDeleteAll(m_plots);
    m_plots = makePlots(m_content, nullptr);
    for (CurvePlot* plot : qAsConst(m_plots)) {
        m_stack->addWidget(plot);
        connectPlot(plot);
        for (int i = 0; i < m_content.curves.size(); ++i) {
            plot->showCurve(i, !isHidden(m_content.curves.at(i).name));
        }
    }
    m_stack->setVisible(!m_plots.isEmpty());
    m_logAction->setChecked(m_content.xLog);
    m_logYAction->setChecked(m_content.yLog);
    fillList();
    setViews(keepsView && quantities == m_content.quantities() ? before : fittingViews(m_plots));
    if (!keepsView) {
        placeCursors();
    }
    showCursors(m_cursorAction->isChecked());
    const bool hasRun = !m_simulation->simulator().runs().isEmpty();
    m_message->setText(hasRun ? m_content.problems.join(QLatin1Char('\n'))
                              : tr("F5 runs the analysis that the panel Simulation sets up."));
    m_message->setVisible(!m_message->text().isEmpty());
}

void PlotPanel::connectPlot(CurvePlot* plot) {
    connect(plot, &CurvePlot::viewWanted, this,
            [this, plot](const QRectF& view, bool step) { applyView(plot, view, step); });
    connect(plot, &CurvePlot::backWanted, this, &PlotPanel::back);
    connect(plot, &CurvePlot::fitWanted, this, &PlotPanel::fit);
    connect(plot, &CurvePlot::curveClicked, this, &PlotPanel::pick);
    connect(plot, &CurvePlot::cursorMoved, this, [this](int cursor, double x) {
        m_cursors[cursor] = x;
        readCursors();
    });
}

void PlotPanel::fillList() {
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    m_list->headerItem()->setText(ValueA, m_content.isPoint ? tr("Value") : tr("A"));
    for (int i = 0; i < m_content.curves.size(); ++i) {
        const PlotCurve& curve = m_content.curves.at(i);
        auto* item = new QTreeWidgetItem(m_list, {curve.name});
        if (m_content.isPoint) {
            const PlotTrace& trace = curve.traces.first();
            item->setText(ValueA, trace.values.isEmpty()
                                      ? QString()
                                      : shortNumber(trace.values.first(), trace.quantity));
            continue;
        }
        item->setIcon(Name, colorIcon(curveColor(i, palette().color(QPalette::Base))));
        item->setCheckState(Name, isHidden(curve.name) ? Qt::Unchecked : Qt::Checked);
    }
}

void PlotPanel::fit() {
    m_history.clear();
    setViews(fittingViews(m_plots));
}

QVector<QRectF> PlotPanel::views() const {
    QVector<QRectF> views;
    for (const CurvePlot* plot : m_plots) {
        views.append(plot->view());
    }
    return views;
}

void PlotPanel::setViews(const QVector<QRectF>& views) {
    for (int i = 0; i < m_plots.size() && i < views.size(); ++i) {
        m_plots.at(i)->setView(views.at(i));
    }
    alignPlots(m_plots, m_content.xTitle);
}

void PlotPanel::applyView(CurvePlot* plot, const QRectF& view, bool step) {
    QVector<QRectF> wanted = views();
    if (step) {
        m_history.append(wanted);
    }
    for (int i = 0; i < wanted.size(); ++i) {
        QRectF& own = wanted[i];
        own = m_plots.at(i) == plot ? view
                                    : QRectF(view.left(), own.top(), view.width(), own.height());
    }
    setViews(wanted);
}

void PlotPanel::back() {
    setViews(m_history.isEmpty() ? fittingViews(m_plots) : m_history.takeLast());
}

void PlotPanel::listItemChanged(QTreeWidgetItem* item) {
    const int number = m_list->indexOfTopLevelItem(item);
    const bool shown = item->checkState(Name) == Qt::Checked;
    const QString name = m_content.curves.at(number).name;
    if (shown == !isHidden(name)) {
        return;
    }
    if (shown) {
        m_hidden.remove(name);
    } else {
        m_hidden.insert(name);
    }
    for (CurvePlot* plot : qAsConst(m_plots)) {
        plot->showCurve(number, shown);
        plot->replot();
    }
}

void PlotPanel::pick(int number) {
    const PlotCurve& curve = m_content.curves.at(number);
    m_list->setCurrentItem(m_list->topLevelItem(number));
    emit picked(curve.net, curve.element);
}

void PlotPanel::placeCursors() {
    if (m_plots.isEmpty()) {
        return;
    }
    // By what is seen, so that they part on a logarithmic axis, too.
    const QRectF view = m_plots.first()->view();
    for (int i = 0; i < 2; ++i) {
        const double share = (i + 1) / 3.0;
        m_cursors[i] = m_content.xLog ? view.left() * std::pow(view.right() / view.left(), share)
                                      : view.left() + share * view.width();
    }
}

void PlotPanel::showCursors(bool shown) {
    if (shown && !m_plots.isEmpty()) {
        const QRectF view = m_plots.first()->view();
        // Cursors that nobody sees can't be dragged.
        if (m_cursors[0] < view.left() || m_cursors[1] > view.right()) {
            placeCursors();
        }
    }
    for (const int column : {ValueA, ValueB, Difference}) {
        const bool isValue = column == ValueA && m_content.isPoint;
        m_list->setColumnHidden(column, !isValue && (!shown || m_content.isPoint));
    }
    readCursors();
    if (shown) {
        makeRoomForValues();
    }
}

void PlotPanel::makeRoomForValues() {
    const int wanted = std::min(m_list->header()->length() + 2 * m_list->frameWidth(),
                                static_cast<int>(LargestShare * m_halves->width()));
    const QList<int> sizes = m_halves->sizes();
    if (sizes.at(1) < wanted) {
        m_halves->setSizes({sizes.at(0) + sizes.at(1) - wanted, wanted});
    }
}

QString PlotPanel::valuesAt(const PlotCurve& curve, int number, double x) const {
    QStringList values;
    for (const PlotTrace& trace : curve.traces) {
        for (const CurvePlot* plot : m_plots) {
            if (plot->axisTitle(QwtPlot::yLeft).text() == trace.quantity) {
                values.append(shortNumber(plot->valueAt(number, x), trace.quantity));
            }
        }
    }
    return values.join(QStringLiteral(", "));
}

void PlotPanel::readCursors() {
    const bool shown = m_cursorAction->isChecked() && !m_plots.isEmpty();
    for (CurvePlot* plot : qAsConst(m_plots)) {
        plot->setCursors(shown, m_cursors[0], m_cursors[1]);
    }
    if (!shown) {
        m_reading->clear();
        return;
    }
    const double way = m_cursors[1] - m_cursors[0];
    QString text =
        tr("A %1   B %2   B − A %3")
            .arg(shortNumber(m_cursors[0], m_content.xUnit),
                 shortNumber(m_cursors[1], m_content.xUnit), shortNumber(way, m_content.xUnit));
    if (m_content.xUnit == QLatin1String("s") && way != 0) {
        text += QStringLiteral(" (%1)").arg(shortNumber(1 / std::abs(way), QStringLiteral("Hz")));
    }
    m_reading->setText(text);
    const QSignalBlocker quiet(m_list);
    for (int i = 0; i < m_content.curves.size(); ++i) {
        const PlotCurve& curve = m_content.curves.at(i);
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        item->setText(ValueA, valuesAt(curve, i, m_cursors[0]));
        item->setText(ValueB, valuesAt(curve, i, m_cursors[1]));
        QStringList differences;
        for (const PlotTrace& trace : curve.traces) {
            const CurvePlot* plot = m_plots.at(m_content.quantities().indexOf(trace.quantity));
            differences.append(shortNumber(
                plot->valueAt(i, m_cursors[1]) - plot->valueAt(i, m_cursors[0]), trace.quantity));
        }
        item->setText(Difference, differences.join(QStringLiteral(", ")));
    }
}

void PlotPanel::setXLog(bool log) {
    m_content.xLog = log;
    for (CurvePlot* plot : qAsConst(m_plots)) {
        plot->setXLog(log);
    }
    fit();
    placeCursors();
    readCursors();
}

void PlotPanel::setYLog(bool log) {
    m_content.yLog = log;
    for (CurvePlot* plot : qAsConst(m_plots)) {
        plot->setYLog(isYLog(m_content, *plot));
    }
    fit();
}

QByteArray PlotPanel::svg() const {
    return plotSvg(m_content, m_hidden, views());
}

void PlotPanel::exportCsv() {
    QStringList problems;
    save(QStringLiteral("csv"), m_simulation->csv(&problems));
}

void PlotPanel::exportSvg() {
    save(QStringLiteral("svg"), svg());
}

void PlotPanel::save(const QString& suffix, const QByteArray& bytes) {
    QFileDialog dialog(this, tr("Save curves"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(QStringLiteral("%1 (*.%2)").arg(suffix.toUpper(), suffix));
    dialog.setDefaultSuffix(suffix);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const QString fileName = dialog.selectedFiles().first();
    QString reason;
    if (!PendingFile::write(fileName, bytes, &reason)) {
        QMessageBox::information(this, tr("Cannot save"),
                                 tr("cannot write %1: %2").arg(fileName, reason));
    }
}

void PlotPanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        fillList();
        readCursors();
    }
}
