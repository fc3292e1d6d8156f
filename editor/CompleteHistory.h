#pragma once

#include "HistoryRecords.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

class CCircuitEditor;
class CCircuitEditorData;
class CCircuitEditorElementItem;
class COutputVariablesWidget;
class HistoryEar;
class ICircuit;
class ICircuitElement;
class ICircuitNode;
class ICircuitOutputVariable;
class QGraphicsItem;

/// The history behind the editor's property CompleteHistory. Keeps a mirror of all that is saved,
/// in the form in which it is saved, and hears or is told what may have changed. When a step of the
/// user ends it compares that with the mirror; the difference is the entry. What changes outside
/// any step becomes an entry from the event loop, so that nothing is ever missing.
///
/// Undo puts the differences back through the model calls that a load uses. What comes back is
/// another object under the old number, so that older entries go on working.
class CompleteHistory : public QObject {
    Q_OBJECT

public:
    /// Belongs to the data, which outlives it. Takes over the circuit's present state.
    explicit CompleteHistory(CCircuitEditorData* data);
    ~CompleteHistory() override;

    /// Null for null, and for an editor without a complete history.
    static CompleteHistory* of(const CCircuitEditor* editor);

    /// Forgets all entries: what there is now is the beginning.
    void restart();
    /// Takes over the editor's present circuit, and restarts.
    void bind();

    // Steps nest, and the outermost counts. Use HistoryStep.
    void begin(const QString& text);
    void end();
    /// The step under way is one press of a key that may be held: those of one run, which are
    /// repeats of the first, become one entry.
    void joinRun(bool isRepeat);
    /// From a press of the pointer to its release, which may get lost.
    void beginGesture();
    void endGesture();
    /// Makes an entry of what has changed outside any step.
    void settle();
    /// What has changed outside any step came with a file: it belongs to the beginning.
    void absorb();

    // What may have changed. Model objects tell by their signals, items by these.
    void touch(QGraphicsItem* item);
    /// A box was put into a list of the editor, or taken out.
    void enlist(QGraphicsItem* box);
    void delist(QGraphicsItem* box);
    /// The box has been told to delete itself, and counts as gone when the step ends.
    void dismiss(QGraphicsItem* box);

    // The state that was saved last.
    void markSaved();
    void forgetSaved();
    bool isAsSaved() const;

    /// Puts back one side of a step.
    void apply(const HistoryRecords::Entry& entry, bool isAfter, int stateNumber);

    /// Whether it is putting something back.
    bool isApplying() const { return m_applying; }

    /// Where the mirror differs from the drawing, a sentence each, for checkers. Looks at all.
    QStringList differences();

public slots:
    /// The title or a global parameter.
    void touchCircuit();
    void touchOutputs();

signals:
    /// A step has ended, or was undone or redone; or the saved state is being left.
    void savedStateChanged(bool isAsSaved);

private slots:
    void on_elementAdded(ICircuitElement* element);
    void on_elementRemoved(ICircuitElement* element);
    void on_nodeAdded(ICircuitNode* node);
    void on_nodeRemoved(ICircuitNode* node);

private:
    friend class HistoryEar;
    using Id = HistoryRecords::Id;
    enum Run { NoRun, FirstOfRun, RepeatInRun };

    void listenToCircuit();
    HistoryEar* earOf(Id id);
    void forgetEar(Id id, const QObject* object);
    void touchObject(QObject* object);
    bool isPending() const;
    void changed();
    void commit(const QString& text);
    HistoryRecords::Entry takeEntry();
    /// Does at once what items have put off: formats of boxes, deletions, routes.
    void settleDrawing();
    void tellState();

    // The present state of things.
    std::optional<HistoryRecords::ElementState> capture(ICircuitElement* element) const;
    std::optional<HistoryRecords::NetState> capture(ICircuitNode* node) const;
    std::optional<HistoryRecords::BoxState> capture(QGraphicsItem* box) const;
    QVector<HistoryRecords::ParameterState> captureParameters() const;
    QVector<HistoryRecords::OutputState> captureOutputs() const;
    HistoryRecords::OutputState capture(ICircuitOutputVariable* variable) const;
    QString captureTitle() const;
    QByteArray properties(QObject* object) const;
    HistoryRecords::BoxKind kindOf(const QGraphicsItem* box) const;
    COutputVariablesWidget* panel() const;

    // Putting back, in this order.
    void cutNets(const HistoryRecords::Entry& entry, bool isAfter);
    void removeBoxes(const HistoryRecords::Entry& entry, bool isAfter);
    void restoreElements(const HistoryRecords::Entry& entry, bool isAfter);
    void restoreElement(Id id, const HistoryRecords::ElementState& state);
    void joinNets(const HistoryRecords::Entry& entry, bool isAfter);
    void joinNet(Id id, const HistoryRecords::NetState& state);
    void restoreCircuit(const HistoryRecords::Entry& entry, bool isAfter);
    void restoreParameters(const QVector<HistoryRecords::ParameterState>& wanted);
    void drawNets(const HistoryRecords::Entry& entry, bool isAfter);
    void restoreBoxes(const HistoryRecords::Entry& entry, bool isAfter);
    void makeBox(HistoryRecords::BoxKind kind, Id id, int row);
    void restoreBox(QGraphicsItem* box, const HistoryRecords::BoxState& state);
    void restoreOutputs(const QVector<HistoryRecords::OutputState>& wanted);
    ICircuitOutputVariable* addOutput(const HistoryRecords::OutputState& state);
    void loadProperties(QObject* object, const QByteArray& properties);
    void refreshPanel(const HistoryRecords::Entry& entry);

    CCircuitEditorData* d;
    QPointer<QObject> m_boundCircuit;
    // By groups of numbers. They are children.
    QHash<Id, HistoryEar*> m_ears;
    HistoryRecords::Mirror<HistoryRecords::ElementState, ICircuitElement> m_elements;
    HistoryRecords::Mirror<HistoryRecords::NetState, ICircuitNode> m_nets;
    HistoryRecords::Mirror<HistoryRecords::BoxState, QGraphicsItem>
        m_boxes[HistoryRecords::BoxKindCount];
    QVector<HistoryRecords::ParameterState> m_parameters;
    QVector<HistoryRecords::OutputState> m_outputs;
    QString m_title;
    bool m_circuitTouched = false;
    bool m_outputsTouched = false;
    QSet<QGraphicsItem*> m_dismissed;
    // Elements that look for others by name.
    QSet<Id> m_resolving;

    Id m_lastId = HistoryRecords::NoId;
    // The number that the next object gets: that of the one which it replaces.
    Id m_reborn = HistoryRecords::NoId;
    int m_depth = 0;
    bool m_inGesture = false;
    bool m_applying = false;
    QString m_text;
    Run m_run = NoRun;
    QTimer m_settleTimer;
    // Every state that a step leads to has a number of its own.
    int m_lastState = 0;
    int m_state = 0;
    int m_savedState = -1;
    // That the saved state is being left.
    bool m_toldChange = false;
};
