#include "DomAccess.h"

#include <QStringList>

namespace Plexa {

DomElement DomAccess::query(const QString& path) const {
    const QStringList tags = path.split(QLatin1Char('.'));
    const QDomElement root = m_document.documentElement();
    // An empty name would stand for any child where elements are looked for by tag.
    if (root.isNull() || root.tagName() != tags.first() || tags.contains(QString())) {
        return {};
    }
    QList<QDomElement> found{root};
    for (int i = 1; i < tags.size(); ++i) {
        QList<QDomElement> below;
        for (const QDomElement& parent : qAsConst(found)) {
            for (QDomElement child = parent.firstChildElement(tags.at(i)); !child.isNull();
                 child = child.nextSiblingElement(tags.at(i))) {
                below.append(child);
            }
        }
        found = below;
    }
    return DomElement(found);
}

}  // namespace Plexa
