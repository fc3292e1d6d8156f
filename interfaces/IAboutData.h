#pragma once

#include "IContainer.h"

#include <QImage>
#include <QList>
#include <QString>

namespace Plexa {
class AboutPerson;
}

/// What the application's about box tells of a component.
class IAboutData : public virtual IContainer {
public:
    virtual QString productName() const = 0;
    virtual QString organization() const = 0;
    virtual QImage programLogo() const = 0;
    virtual QString version() const = 0;
    virtual QString shortDescription() const = 0;
    virtual QString homepage() const = 0;
    virtual QString bugAddress() const = 0;
    virtual QList<Plexa::AboutPerson> authors() const = 0;
    virtual QList<Plexa::AboutPerson> credits() const = 0;
    virtual QString license() const = 0;
    virtual QString copyrightStatement() const = 0;

protected:
    ~IAboutData() = default;
};

Q_DECLARE_INTERFACE(IAboutData, "com.tesmira.IAboutData/1.0")
