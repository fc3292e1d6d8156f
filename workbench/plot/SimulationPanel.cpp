#include "SimulationPanel.h"

#include "Analysis.h"
#include "AnalysisForm.h"
#include "PendingFile.h"
#include "SimulationPart.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

/// Three lines, in pixels: what a missing simulator is told by.
constexpr int LeastProblems = 60;

enum Role { NetRole = Qt::UserRole, ElementRole };

}  // namespace

SimulationPanel::SimulationPanel(SimulationPart* simulation, QWidget* parent)
    : QWidget(parent),
      m_simulation(simulation),
      m_analysis(new QComboBox),
      m_pages(new QStackedWidget),
      m_sweep(new AnalysisForm(analysisTypes().last())),
      m_sweepSwitch(new QToolButton),
      m_hint(new QLabel),
      m_run(new QPushButton(tr("Run"))),
      m_cancel(new QPushButton(tr("Cancel"))),
      m_progress(new QProgressBar),
      m_problems(new QListWidget) {
    for (const AnalysisType& type : analysisTypes()) {
        const bool isSweep = &type == &analysisTypes().last();
        AnalysisForm* form = isSweep ? m_sweep : new AnalysisForm(type);
        connect(form, &AnalysisForm::edited, this, &SimulationPanel::store);
        if (!isSweep) {
            m_analysis->addItem(QCoreApplication::translate("Simulation", type.label),
                                QString::fromLatin1(type.name));
            m_forms.append(form);
            m_pages->addWidget(form);
        }
    }
    m_analysis->setObjectName(QStringLiteral("analysis"));
    m_problems->setObjectName(QStringLiteral("problems"));
    m_problems->setAccessibleName(tr("Problems"));
    m_problems->setWordWrap(true);
    m_problems->setMinimumHeight(LeastProblems);
    m_hint->setObjectName(QStringLiteral("hint"));
    m_hint->setWordWrap(true);
    m_progress->hide();

    m_sweepSwitch->setObjectName(QStringLiteral("sweep"));
    m_sweepSwitch->setText(tr("Run through a parameter"));
    m_sweepSwitch->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_sweepSwitch->setArrowType(Qt::RightArrow);
    m_sweepSwitch->setAutoRaise(true);
    m_sweepSwitch->setCheckable(true);
    m_sweep->hide();
    connect(m_sweepSwitch, &QToolButton::toggled, this, [this](bool open) {
        m_sweepSwitch->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
        m_sweep->setVisible(open);
    });
    // The window must fit on small screens, however many fields there are.
    auto* forms = new QWidget;
    auto* formLayout = new QVBoxLayout(forms);
    formLayout->setContentsMargins(0, 0, 0, 0);
    formLayout->addWidget(m_pages);
    formLayout->addWidget(m_sweepSwitch);
    formLayout->addWidget(m_sweep);
    formLayout->addStretch();
    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(forms);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_run);
    buttons->addWidget(m_cancel);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_analysis);
    layout->addWidget(scroll, 3);
    layout->addWidget(m_hint);
    layout->addLayout(buttons);
    layout->addWidget(m_progress);
    layout->addWidget(m_problems, 1);

    connect(m_analysis, QOverload<int>::of(&QComboBox::activated), this, &SimulationPanel::store);
    connect(m_run, &QPushButton::clicked, this, &SimulationPanel::run);
    connect(m_cancel, &QPushButton::clicked, this, &SimulationPanel::cancel);
    connect(m_problems, &QListWidget::itemClicked, this, &SimulationPanel::pick);
    connect(simulation, &SimulationPart::setupChanged, this, &SimulationPanel::showSetup);
    connect(&simulation->simulator(), &Simulator::progressed, m_progress, [this](int percent) {
        // Not every analysis tells how far it is: until it does the bar just moves.
        m_progress->setRange(0, percent > 0 ? 100 : 0);
        m_progress->setValue(percent);
    });
    connect(&simulation->simulator(), &Simulator::finished, this, &SimulationPanel::ended);
    showSetup();
    setRunning(false);
}

void SimulationPanel::showSetup() {
    m_showing = true;
    const SimulationSetup& setup = m_simulation->setup();
    const int active = qMax(0, m_analysis->findData(setup.active()));
    m_analysis->setCurrentIndex(active);
    m_pages->setCurrentIndex(active);
    // The box is as high as the form that shows, not as the highest.
    for (int i = 0; i < m_pages->count(); ++i) {
        m_pages->widget(i)->setSizePolicy(
            QSizePolicy::Preferred, i == active ? QSizePolicy::Preferred : QSizePolicy::Ignored);
    }
    m_pages->adjustSize();
    for (AnalysisForm* form : qAsConst(m_forms)) {
        form->showValues(setup);
    }
    m_sweep->showValues(setup);
    if (!setup.sweptParameter().isEmpty()) {
        m_sweepSwitch->setChecked(true);
    }
    QString hint = setup.problem(setup.active());
    if (hint.isEmpty()) {
        hint = setup.problem(QStringLiteral("sweep"));
    }
    m_hint->setText(hint);
    m_hint->setVisible(!hint.isEmpty());
    m_showing = false;
}

void SimulationPanel::store() {
    if (m_showing) {
        return;
    }
    SimulationSetup setup = m_simulation->setup();
    setup.setActive(m_analysis->currentData().toString());
    for (const AnalysisForm* form : qAsConst(m_forms)) {
        form->store(&setup);
    }
    m_sweep->store(&setup);
    m_simulation->setSetup(setup);
}

void SimulationPanel::run() {
    if (m_simulation->simulator().isRunning()) {
        return;
    }
    // What is being typed counts.
    store();
    m_problems->clear();
    bool fit = true;
    for (const CircuitProblem& problem : m_simulation->check()) {
        addProblem(problem);
        fit = fit && problem.severity != CircuitProblem::Error;
    }
    QString reason;
    if (fit && m_simulation->run(&reason)) {
        setRunning(m_simulation->simulator().isRunning());
        return;
    }
    if (!reason.isEmpty()) {
        addProblem({CircuitProblem::Error, reason, {}, {}});
    }
    emit failed();
}

void SimulationPanel::cancel() {
    m_simulation->simulator().cancel();
}

void SimulationPanel::ended(const QString& error, const QString& element) {
    setRunning(false);
    if (error.isEmpty()) {
        emit succeeded();
    } else {
        addProblem({CircuitProblem::Error, error, element, {}});
        emit failed();
    }
}

void SimulationPanel::setRunning(bool running) {
    m_run->setEnabled(!running);
    m_cancel->setEnabled(running);
    m_progress->setVisible(running);
    emit runningChanged(running);
}

void SimulationPanel::addProblem(const CircuitProblem& problem) {
    const bool isError = problem.severity == CircuitProblem::Error;
    auto* item = new QListWidgetItem(style()->standardIcon(isError ? QStyle::SP_MessageBoxCritical
                                                                   : QStyle::SP_MessageBoxWarning),
                                     problem.text, m_problems);
    item->setData(NetRole, problem.net);
    item->setData(ElementRole, problem.element);
}

void SimulationPanel::pick(QListWidgetItem* item) {
    emit problemPicked(item->data(NetRole).toString(), item->data(ElementRole).toString());
}

void SimulationPanel::exportNetlist() {
    store();
    QFileDialog dialog(this, tr("Export netlist"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(tr("Netlists (*.cir)"));
    dialog.setDefaultSuffix(QStringLiteral("cir"));
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const QString fileName = dialog.selectedFiles().first();
    QString reason;
    if (!PendingFile::write(fileName, m_simulation->netlist().toUtf8(), &reason)) {
        QMessageBox::information(this, tr("Cannot save"),
                                 tr("cannot write %1: %2").arg(fileName, reason));
    }
}
