#pragma once

#include <QPointer>
#include <QString>

class CCircuitEditor;
class CompleteHistory;

/// One step of the user in the complete history, for as long as it lives: what changes meanwhile,
/// by whatever way, becomes one entry when the outermost one ends, and none if nothing differs.
/// Does nothing for an editor whose property CompleteHistory is off.
///
/// Whoever answers a gesture of the user declares one first, so that it ends last: boxes that were
/// told to go die with its end. A dialog or menu may run inside. The presses and releases of the
/// pointer, the keys and the menus of the canvas are steps already; one inside them gives a text
/// and no more. Nothing has to be recorded: the history looks at what has changed.
///
///     void CCircuitEditor::mirrorGroup() {
///         const HistoryStep step(this, QStringLiteral("Mirror"));
///         ...
class HistoryStep {
public:
    /// Without a text the step is called by what it has changed ("Move 5 elements"). The outermost
    /// text counts. The editor may be null, and may go while the step lasts.
    explicit HistoryStep(const CCircuitEditor* editor, const QString& text = {});
    ~HistoryStep();
    Q_DISABLE_COPY(HistoryStep)

private:
    QPointer<CompleteHistory> m_history;
};
