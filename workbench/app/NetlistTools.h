#pragma once

#include <QObject>
#include <QString>

class CircuitElement;
class ElementDescription;
class QWidget;
class Workbench;

/// The element type that is given a text netlist: asks for the text when one is placed, and puts an
/// element with other terminals in the place of one whose text is edited.
class NetlistTools : public QObject {
    Q_OBJECT

public:
    /// `window` owns it.
    NetlistTools(const Workbench& workbench, QWidget* window);

    /// Whether the user must give a text before the type can be placed.
    static bool isAskedFor(const QString& type);
    /// What to place for a type of the palette: the type itself, or the one of the text that the
    /// user has given; empty if he has given none.
    QString chosenType(const QString& type);
    /// Asks for another text for the selected element.
    void editSelected();

protected:
    /// F1 on the canvas: elements of a user's own text share the help of their kind.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Null unless an element that is made of a text netlist is selected.
    CircuitElement* selected() const;
    /// Empty if the user doesn't want any.
    QString askFor(const QString& text);
    ElementDescription* description(const QString& type) const;
    void replace(CircuitElement* element, const QString& type);

    const Workbench& m_workbench;
    QWidget* m_window;
};
