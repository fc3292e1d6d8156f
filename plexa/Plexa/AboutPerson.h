#pragma once

#include <QString>

namespace Plexa {

/// One author or contributor in an about box.
class AboutPerson {
public:
    AboutPerson(QString name, QString email, QString webAddress, QString role)
        : m_name(std::move(name)),
          m_email(std::move(email)),
          m_webAddress(std::move(webAddress)),
          m_role(std::move(role)) {}

    QString name() const { return m_name; }
    QString email() const { return m_email; }
    QString webAddress() const { return m_webAddress; }
    QString role() const { return m_role; }

private:
    QString m_name;
    QString m_email;
    QString m_webAddress;
    QString m_role;
};

}  // namespace Plexa
