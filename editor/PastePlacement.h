#pragma once

#include "CPlacementTool.h"

#include <QPointF>
#include <QPointer>
#include <QString>

class QDomDocument;
class QDomElement;
class QGraphicsItem;
class QGraphicsObject;

/// What is to be pasted, at the pointer: shown by pictures, and pasted when it is put down.
class PastePlacement : public CPlacementLoad {
public:
    /// Null if the entry of the clipboard holds nothing to paste.
    static std::unique_ptr<PastePlacement> create(CCircuitEditor* editor, int index);
    /// The same for a clipboard document that lies in no clipboard.
    static std::unique_ptr<PastePlacement> createCopy(CCircuitEditor* editor, const QString& text);
    ~PastePlacement() override;

    void hangAt(const QPointF& point) override;
    bool putDown(const QPointF& point) override;
    QString hint() const override;

private:
    PastePlacement(CCircuitEditor* editor, int index);
    bool show(QDomDocument document);
    void showElement(QDomDocument document, const QDomElement& record);
    void showWire(const QDomElement& record);
    void showTextBox(const QDomElement& record);

    QPointer<CCircuitEditor> m_editor;
    int m_index;
    // In place of the entry.
    QString m_text;
    // What comes to lie at the pointer, in the coordinates of the pictures.
    QPointF m_anchor;
    // Goes with the scene, and takes the pictures along.
    QPointer<QGraphicsObject> m_pictures;
    // Outside of any circuit, for their pictures.
    QList<QPointer<QObject>> m_elements;
    int m_count = 0;
};
