// What the random user changes in boxes, values, lists, and in the editor's own properties.

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitElementPropertyTextBox.h"
#include "COutputVariablesWidget.h"
#include "HistoryUser.h"
#include "ICircuitOutputVariable.h"
#include "OutputVariable.h"

#include <QMetaProperty>
#include <QTreeWidget>

#include <algorithm>

namespace {

/// The editor's properties that are on or off, but for the one that forbids all.
QVector<QMetaProperty> abilities() {
    QVector<QMetaProperty> result;
    const QMetaObject& meta = CCircuitEditor::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        if (property.userType() == QMetaType::Bool && qstrcmp(property.name(), "ReadOnly") != 0) {
            result.append(property);
        }
    }
    return result;
}

}  // namespace

void HistoryUser::annotate() {
    CCircuitEditorElementItem* item = anyElement();
    const QPointF place = point();
    if (item && m_random.bounded(2)) {
        QMetaObject::invokeMethod(item, m_random.bounded(2)
                                            ? "createElementPropertyTextBoxesForDisplayProperties"
                                            : "createElementPropertyTextBoxForCaptionProperty");
    } else if (m_random.bounded(2)) {
        editor->addTextBox(place)->setText(QStringLiteral("a{|b|}{|?|}c"));
    } else {
        circuit.addGlobalVariable(QStringLiteral("k"), 1, true);
        auto* box = editor->addGlobalParamTextBox(place);
        box->setGlobalParameterName(QStringLiteral("k"));
        box->setText(QStringLiteral("k = 1"));
    }
}

void HistoryUser::changeBox() {
    QGraphicsItem* item = anyBox();
    if (!item) {
        return;
    }
    const QRectF rect = item->sceneBoundingRect();
    auto* text = dynamic_cast<CCircuitEditorTextBox*>(item);
    const int action = m_random.bounded(6);
    if (action == 2) {
        item->setSelected(true);
        item->setFocus();
        key(m_random.bounded(2) ? Qt::Key_Delete : Qt::Key_Left);
    } else if (action < 2) {
        drag(action == 0 ? rect.center() : rect.bottomRight() - QPointF(3, 3), point());
    } else if (text && action == 3) {
        text->setText(QStringLiteral("t%1").arg(m_random.bounded(9)));
    } else if (text && action == 4) {
        QTextCharFormat bold;
        bold.setFontWeight(QFont::Bold);
        text->setRuns({{m_random.bounded(2), 1, bold}});
        text->setFillColor(QColor(m_random.bounded(255), 0, 0));
        text->setTextColor(QColor(0, m_random.bounded(255), 0));
    } else if (text) {
        text->editText();
    }
}

void HistoryUser::changeParameters() {
    const QString name = QStringLiteral("k%1").arg(m_random.bounded(3));
    const int count = circuit.globalVariableCount();
    const int chosen = count ? m_random.bounded(count) : -1;
    const QString edited = count ? circuit.globalVariableName(chosen) : QStringLiteral("Title");
    panel.setObject(&circuit, false);
    oneOf({[&] { circuit.addGlobalVariable(name, m_random.bounded(9), m_random.bounded(2)); },
           [&] { circuit.addStringGlobalVariable(name, QStringLiteral("text")); },
           [&] { circuit.removeGlobalVariable(name); },
           [&] { circuit.changeGlobalVariableName(chosen, name); },
           [&] { panel.edit(QStringLiteral("Title"), name); },
           [&] { panel.edit(edited, QString::number(m_random.bounded(9))); }});
}

void HistoryUser::changeProperty() {
    CCircuitEditorElementItem* item = anyElement();
    if (!item) {
        return;
    }
    QObject* object = item->element()->containerObject();
    panel.setObject(object, false);
    const QString word = QStringLiteral("x%1").arg(m_random.bounded(5));
    const auto setValue = [&] {
        auto* properties = qobject_cast<IEditableProperties*>(object);
        if (properties->propertyCount() > 0) {
            panel.edit(properties->propertyName(0),
                       m_random.bounded(2) ? QStringLiteral("4.7k") : QStringLiteral("k1"));
        }
    };
    const auto changeNet = [&] {
        if (ICircuitNode* net = anyNet()) {
            panel.setObject(net->containerObject(), false);
            m_random.bounded(2) ? panel.edit(QStringLiteral("Name"), word)
                                : panel.edit(QStringLiteral("WireClearance"), 30);
        }
    };
    oneOf({[&] { panel.edit(QStringLiteral("Name"), word); },
           [&] { panel.edit(QStringLiteral("Caption"), word); },
           [&] { panel.edit(QStringLiteral("Rotation"), m_random.bounded(4)); }, changeNet,
           setValue});
}

void HistoryUser::changeOutputs() {
    CCircuitEditorElementItem* item = anyElement();
    COutputVariablesWidget* rows = framework.component->outputVariablesWidget();
    auto* list = rows->findChild<QTreeWidget*>();
    const int count = circuit.outputVariableCount();
    ICircuitOutputVariable* variable =
        count ? circuit.outputVariable(m_random.bounded(count)) : nullptr;
    const int action = m_random.bounded(8);
    if (action < 3 && item) {
        ICircuitNode* net = anyNet();
        ICircuitElement* element = item->element();
        if (action == 0) {
            circuit.addOutputVariable(element, QStringLiteral("i"));
        } else if (action == 1) {
            circuit.addOutputVariable(element,
                                      element->elementNode(element->elementNodeNames().first()));
        } else if (net) {
            circuit.addOutputVariable(net);
        }
    } else if (action < 5 && list->topLevelItemCount() > 0) {
        list->setCurrentItem(list->topLevelItem(m_random.bounded(list->topLevelItemCount())));
        action == 3 ? rows->on_cmdUp_clicked() : rows->on_cmdDown_clicked();
    } else if (variable && action == 5) {
        variable->setName(QStringLiteral("v%1").arg(m_random.bounded(4)));
    } else if (variable && action == 6) {
        variable->setAC(!variable->isAC());
    } else if (variable) {
        circuit.removeOutputVariable(variable);
    }
}

void HistoryUser::setProperties(bool on) {
    for (const QMetaProperty& property : abilities()) {
        property.write(editor, on);
    }
}

void HistoryUser::switchProperty() {
    const QVector<QMetaProperty> all = abilities();
    const QMetaProperty property = all.at(m_random.bounded(all.size()));
    if (qstrcmp(property.name(), "CompleteHistory") == 0 && !m_isComplete &&
        !editor->isReadOnly()) {
        giveCollaborators();
    }
    property.write(editor, !property.read(editor).toBool());
    if (m_random.bounded(10) == 0) {
        editor->setReadOnly(!editor->isReadOnly());
    }
    m_isComplete = editor->isCompleteHistory();
    m_isAllOn = std::all_of(all.begin(), all.end(), [this](const QMetaProperty& ability) {
        return ability.read(editor).toBool();
    });
}

void HistoryUser::giveCollaborators() {
    editor->setReadOnly(false);
    editor->setXmlUtils(&xmlUtils);
    editor->setQObjectLoadSave(&loadSave);
    editor->setCircuitElementFactory(&factory);
    editor->setElementExplorer(&explorer);
    editor->setPropertyEditor(&panel);
    editor->setClipboard(&clipboard);
    if (editor->circuitSolver() != &solver) {
        editor->setCircuitSolver(&solver);
    }
}

void HistoryUser::changeCollaborators() {
    // A history that is to be complete needs them all.
    editor->setCompleteHistory(false);
    m_isComplete = false;
    m_isAllOn = false;
    const auto given = [this] { giveCollaborators(); };
    oneOf({[&] { editor->setXmlUtils(nullptr); }, [&] { editor->setQObjectLoadSave(nullptr); },
           [&] { editor->setCircuitElementFactory(nullptr); },
           [&] { editor->setElementExplorer(nullptr); },
           [&] { editor->setPropertyEditor(nullptr); }, [&] { editor->setClipboard(nullptr); },
           [&] { editor->setCircuitSolver(nullptr); }, given, given, given});
}
