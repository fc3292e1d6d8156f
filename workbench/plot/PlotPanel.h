#pragma once

#include "PlotContent.h"

#include <QPointer>
#include <QRectF>
#include <QSet>
#include <QVector>
#include <QWidget>

class CurvePlot;
class QAction;
class QLabel;
class QSplitter;
class QTreeWidget;
class QTreeWidgetItem;

/// The curves of the last simulation, a plot for each quantity, with the list that names, hides and
/// measures them. Follows the results, and the output variables of the circuit.
class PlotPanel : public QWidget {
    Q_OBJECT

public:
    explicit PlotPanel(SimulationPart* simulation, QWidget* parent = nullptr);
    ~PlotPanel() override;

    const PlotContent& content() const { return m_content; }
    const QVector<CurvePlot*>& plots() const { return m_plots; }
    bool isHidden(const QString& curve) const { return m_hidden.contains(curve); }
    /// What is seen, on white.
    QByteArray svg() const;

public slots:
    /// Asks for a name; tells in a box what goes wrong.
    void exportCsv();
    void exportSvg();

signals:
    /// The user asks where in the drawing a curve is from; one of both may be empty.
    void picked(const QString& net, const QString& element);

private:
    /// What a run has answered takes the place of all; a change of the variables leaves the view.
    void showResults();
    void scheduleRefresh();
    void refresh();
    void setContent(PlotContent content, bool keepsView);
    void connectPlot(CurvePlot* plot);
    void fillList();
    void fit();
    void setViews(const QVector<QRectF>& views);
    QVector<QRectF> views() const;
    void applyView(CurvePlot* plot, const QRectF& view, bool step);
    void back();
    void listItemChanged(QTreeWidgetItem* item);
    void pick(int number);
    void showCursors(bool shown);
    void placeCursors();
    void makeRoomForValues();
    /// "-3.01dB, -45°" of one curve.
    QString valuesAt(const PlotCurve& curve, int number, double x) const;
    void readCursors();
    void setXLog(bool log);
    void setYLog(bool log);
    void save(const QString& suffix, const QByteArray& bytes);
    void changeEvent(QEvent* event) override;

    SimulationPart* m_simulation;
    PlotContent m_content;
    QVector<CurvePlot*> m_plots;
    QVector<QVector<QRectF>> m_history;
    QSet<QString> m_hidden;
    double m_cursors[2] = {0, 0};
    bool m_scheduled = false;
    QSplitter* m_halves;
    QSplitter* m_stack;
    QTreeWidget* m_list;
    QLabel* m_reading;
    QLabel* m_message;
    QAction* m_cursorAction;
    QAction* m_logAction;
    QAction* m_logYAction;
};
