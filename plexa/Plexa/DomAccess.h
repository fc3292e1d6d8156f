#pragma once

#include "PlexaExport.h"

#include <QDomDocument>
#include <QDomElement>
#include <QList>
#include <QString>

namespace Plexa {

/// The answer to a query: elements of the document that was asked, in its order. They stay valid
/// when the answer and the access are gone.
class PLEXA_EXPORT DomElement {
public:
    DomElement() = default;
    explicit DomElement(QList<QDomElement> elements) : m_elements(std::move(elements)) {}

    /// The first match; a null element if there is none.
    QDomElement element() const { return m_elements.value(0); }
    QList<QDomElement> elements() const { return m_elements; }

private:
    QList<QDomElement> m_elements;
};

/// Finds the elements of a document by path. A path is tag names joined by dots, from the root
/// element's own tag on: "Project.Part" finds every `<Part>` directly below a root `<Project>`. A
/// path with an empty name finds nothing.
class PLEXA_EXPORT DomAccess {
public:
    explicit DomAccess(const QDomDocument& document) : m_document(document) {}

    DomElement query(const QString& path) const;

private:
    QDomDocument m_document;
};

}  // namespace Plexa
