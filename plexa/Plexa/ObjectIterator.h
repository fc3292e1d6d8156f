#pragma once

#include "PlexaExport.h"

#include <QList>
#include <QPair>
#include <QString>

class QObject;

namespace Plexa {

class AbstractComponent;

/// Walks the named objects that the GUI description lists, of all components in order of creation
/// or of one. Names that a component doesn't answer are passed over.
class PLEXA_EXPORT ObjectIterator {
public:
    ObjectIterator();
    explicit ObjectIterator(const QString& componentName);

    /// Starts anew; null if there is no object.
    QObject* firstObject() const;
    /// Null past the end.
    QObject* nextObject() const;
    /// Complete name of the object last answered; empty if there is none.
    QString currentObjectName() const;
    AbstractComponent* currentObjectComponent() const;

private:
    void collect(AbstractComponent* component);

    QList<QPair<AbstractComponent*, QString>> m_names;
    mutable int m_index = -1;
};

}  // namespace Plexa
