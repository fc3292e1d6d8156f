#pragma once

class QString;

/// Second base of descriptions: yields further interfaces that aren't implemented by a QObject.
class IInterfaceQuery {
public:
    /// Stores in `*result` a pointer of exactly the type named by the short interface name, such as
    /// "IElementBasicParametersDesc"; leaves `*result` alone if the interface isn't offered.
    virtual void queryInterface(const QString& name, void** result) = 0;

protected:
    ~IInterfaceQuery() = default;
};
