#pragma once

#include <QByteArray>
#include <QDomElement>

#include <functional>

/// The text of a circuit file, read record by record. Only of plain files, which is what programs
/// write: one that has comments, declarations of its own, sections or line breaks within attributes
/// is not, and neither is one with a fault. Those are for a `QDomDocument`, which then is the judge
/// of what they mean.
class CircuitFileText {
public:
    /// In UTF-8, without NULs.
    explicit CircuitFileText(QByteArray text);

    bool isPlain() const { return m_isPlain; }
    const QByteArray& text() const { return m_text; }
    /// Calls with every element record and then every node record among the root's children, each
    /// kind in its order. The record lives as long as somebody holds it; its document holds no
    /// other.
    void forEachRecord(const std::function<void(const QDomElement&)>& useElement,
                       const std::function<void(const QDomElement&)>& useNode) const;

private:
    using Use = std::function<void(const QDomElement&)>;

    bool isWellFormed();
    /// Calls only what isn't null.
    void readRecords(const Use& useElement, const Use& useNode) const;

    const QByteArray m_text;
    bool m_isPlain = false;
    // As programs write it: no element comes after a node.
    bool m_elementsComeFirst = true;
};
