#include "HistoryUser.h"

#include "COutputVariablesWidget.h"
#include "CUndoRedo.h"
#include "CompleteHistory.h"
#include "Invariants.h"
#include "WarningGuard.h"

#include <QApplication>
#include <QClipboard>
#include <QDomDocument>
#include <QFile>
#include <QGraphicsItem>
#include <QMap>

#include <iterator>

#include <sys/wait.h>
#include <unistd.h>

namespace {

/// The element as text in which only differences of content show: numbers count from `first`.
QString canonical(const QDomElement& element, int first) {
    QMap<QString, QString> attributes;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.count(); ++i) {
        const QDomAttr attribute = map.item(i).toAttr();
        const bool isNumber = attribute.name() == QLatin1String("ID") ||
                              attribute.name() == QLatin1String("ElementID");
        attributes.insert(attribute.name(), isNumber
                                                ? QString::number(attribute.value().toInt() - first)
                                                : attribute.value());
    }
    QString text = element.tagName();
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        text += QStringLiteral(" %1=%2").arg(it.key(), it.value());
    }
    text += QLatin1Char('\n');
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        text += child.isElement() ? canonical(child.toElement(), first)
                                  : child.nodeValue() + QLatin1Char('\n');
    }
    return text;
}

/// The first line that the other text hasn't got at that place, and what leads to it.
QString firstDifference(const QByteArray& text, const QByteArray& other) {
    const QList<QByteArray> lines = text.split('\n');
    const QList<QByteArray> others = other.split('\n');
    int i = 0;
    while (i < lines.size() && i < others.size() && lines.at(i) == others.at(i)) {
        ++i;
    }
    return QString::fromUtf8(lines.mid(qMax(0, i - 2), 5).join('\n'));
}

}  // namespace

HistoryUser::HistoryUser() {
    // Else most of the time goes into lines of the grid.
    editor->setGridType(QStringLiteral("dotted"));
    announceLog(QStringLiteral("on_fontSize_valueChanged"));
}

HistoryUser::~HistoryUser() {
    startAnew();
}

void HistoryUser::startAnew() {
    giveCollaborators();
    setProperties(true);
    m_isComplete = true;
    m_isSteady = true;
    m_isAllOn = true;
    m_mistakes.clear();
    editor->stopPlacing();
    framework.component->setManualConnectionMode(false);
    editor->setMode(CCircuitEditor::EditMode);
    key(Qt::Key_Escape);
    circuit.setTitle(QString());
    editor->newProjectPart();
    clipboard.clear();
    QApplication::clipboard()->clear();
    editor->resetTransform();
    editor->centerOn(0, 0);
    turnEventLoop();
    editor->markSaved();
}

QByteArray HistoryUser::state() {
    if (!editor->keepsTextStyles()) {
        // Boxes are stored with the colour that an element lends them while the pointer is on it.
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(editor->viewport(), &leave);
    }
    turnEventLoop();
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("Project"));
    editor->saveProjectPart(document, root);
    framework.component->outputVariablesWidget()->saveProjectPart(document, root);
    const int first =
        root.firstChildElement(QStringLiteral("CircuitElement")).attribute("ID").toInt();
    return editor->describe() + canonical(root, first).toUtf8();
}

int HistoryUser::undoable() const {
    return editor->undoStack()->undoCount();
}

QString HistoryUser::mistakeIn(const QVector<UserStep>& steps) {
    startAnew();
    QMap<int, QByteArray> states{{0, state()}};
    const auto check = [this, &states](const QString& when) {
        const QByteArray now = state();
        QStringList mistakes = breaches();
        if (!m_isComplete) {
            // Undo brings back what its commands hold, and no more.
            states.clear();
            return mistakes.isEmpty() ? QString()
                                      : when + QStringLiteral(": ") + mistakes.join('\n');
        }
        mistakes += editor->completeHistory()->differences();
        const auto known = states.constFind(undoable());
        if (known == states.constEnd()) {
            states.insert(undoable(), now);
        } else if (*known != now) {
            mistakes << QStringLiteral("with %1 entries the drawing was\n%2\nand is\n%3")
                            .arg(undoable())
                            .arg(firstDifference(*known, now), firstDifference(now, *known));
        }
        return mistakes.isEmpty() ? QString()
                                  : when + QStringLiteral(": ") + mistakes.join(QLatin1Char('\n'));
    };
    for (int i = 0; i < steps.size(); ++i) {
        const int reached = undoable();
        const bool wasUndone = !editor->redoText().isEmpty();
        perform(steps.at(i));
        turnEventLoop();
        if (steps.at(i).kind >= SteadyKinds) {
            m_isSteady = false;
            states.clear();
        }
        if (wasUndone && steps.at(i).kind > 1 && editor->redoText().isEmpty()) {
            // A new entry has taken the place of those that were undone.
            while (!states.isEmpty() && states.lastKey() > reached) {
                states.erase(std::prev(states.end()));
            }
        }
        const QString mistake = check(QStringLiteral("step %1").arg(i));
        if (!mistake.isEmpty()) {
            return mistake;
        }
    }
    const auto runThrough = [&](bool isUndo) -> QString {
        for (int guard = editor->undoStack()->count(); guard > 0; --guard) {
            isUndo ? editor->undo() : editor->redo();
            const QString mistake = check(isUndo ? QStringLiteral("undo to %1").arg(undoable())
                                                 : QStringLiteral("redo to %1").arg(undoable()));
            if (!mistake.isEmpty()) {
                return mistake;
            }
        }
        return {};
    };
    const QString undone = runThrough(true);
    if (!undone.isEmpty()) {
        return undone;
    }
    if (m_isSteady && (undoable() != 0 || !editor->isAsSaved())) {
        return QStringLiteral("the beginning is not the saved state");
    }
    return runThrough(false);
}

QString HistoryUser::mistakeInChild(const QVector<UserStep>& steps) {
    int ends[2];
    if (pipe(ends) != 0) {
        return QStringLiteral("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        const QByteArray mistake = mistakeIn(steps).toUtf8();
        const ssize_t size = write(ends[1], mistake.constData(), size_t(mistake.size()));
        _exit(size == mistake.size() && !HasFailure() ? 0 : 1);
    }
    close(ends[1]);
    QFile answer;
    EXPECT_TRUE(answer.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    const QByteArray mistake = answer.readAll();
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return mistake.isEmpty() && status != 0
               ? QStringLiteral("the process ended with %1").arg(status)
               : QString::fromUtf8(mistake);
}

void HistoryUser::cutDown(QVector<UserStep>* steps, QString* mistake) {
    for (int chunk = steps->size() / 2; chunk > 0; chunk /= 2) {
        for (int at = 0; at + chunk <= steps->size();) {
            QVector<UserStep> fewer = *steps;
            fewer.remove(at, chunk);
            const QString same = mistakeInChild(fewer);
            if (same.isEmpty()) {
                at += chunk;
            } else {
                *steps = fewer;
                *mistake = same;
            }
        }
    }
}

QString HistoryUser::text(const QVector<UserStep>& steps) {
    QString result;
    for (const UserStep& step : steps) {
        result += QStringLiteral("%1:%2 ").arg(step.kind).arg(step.seed);
    }
    return result.trimmed();
}

QVector<UserStep> HistoryUser::steps(const QByteArray& text) {
    QVector<UserStep> steps;
    for (const QByteArray& step : text.simplified().split(' ')) {
        const QList<QByteArray> fields = step.split(':');
        if (fields.size() == 2) {
            steps.append({fields.first().toInt(), fields.last().toUInt()});
        }
    }
    return steps;
}

QStringList HistoryUser::breaches() {
    QStringList result = invariantBreaches(*editor) + unannouncedLog() + m_mistakes;
    if (!editor->hasSpatialIndex()) {
        return result;
    }
    // Asks every item, in the order from the front to the back that an index has its list in.
    const QPointF place = m_random.bounded(2) ? terminalPoint() : point() + QPointF(7, 3);
    QList<QGraphicsItem*> found;
    for (QGraphicsItem* item : editor->scene()->items()) {
        if (item->isVisible() && item->sceneBoundingRect().intersects({place, QSizeF(1, 1)}) &&
            item->contains(item->mapFromScene(place))) {
            found.append(item);
        }
    }
    if (editor->scene()->items(place) != found) {
        result
            << QStringLiteral("the index answers others at %1, %2").arg(place.x()).arg(place.y());
    }
    return result;
}

void HistoryUser::reload() {
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("Project"));
    COutputVariablesWidget* outputs = framework.component->outputVariablesWidget();
    if (!editor->circuit() || !editor->saveProjectPart(document, root)) {
        return;
    }
    // What isn't saved, such as sizes that follow from the text, is lost the first time.
    QByteArray before;
    QByteArray after;
    for (int round = 0; round < 2; ++round) {
        before = after;
        outputs->saveProjectPart(document, root);
        editor->closeProjectPart();
        if (editor->loadProjectPart(document, root)) {
            outputs->loadProjectPart(document, root);
        }
        after = state();
        root = document.createElement(QStringLiteral("Project"));
        editor->saveProjectPart(document, root);
    }
    if (m_isAllOn && after != before) {
        m_mistakes << QStringLiteral("after another reload the drawing was\n%1\nand is\n%2")
                          .arg(firstDifference(before, after), firstDifference(after, before));
    }
}
