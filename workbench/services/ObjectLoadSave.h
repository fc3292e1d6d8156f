#pragma once

#include "IQObjectLoadSave.h"

#include <QObject>
#include <QStringList>

/// Persists an object as children of an XML element: `<Property Name="..." Value="..."/>` for each
/// of its stored, readable and writable properties that text can hold, those of QObject itself
/// excepted, and `<Parameter .../>` likewise for each editable property of the group "rparams".
/// What the record holds beyond that is written back as it came.
///
/// The class info "RecordAttributes" names properties, divided by blanks, that whoever makes the
/// element may have put there as attributes. These are read from the attribute where it is, and not
/// written a second time.
class ObjectLoadSave : public QObject, public IQObjectLoadSave {
    Q_OBJECT
    Q_INTERFACES(IQObjectLoadSave)

public:
    explicit ObjectLoadSave(QObject* parent = nullptr);
    ~ObjectLoadSave() override;

    /// The values that objects have not taken since it was asked last: `"4x7" of R in R1`.
    QStringList takeRefusedValues();

    // IContainer
    QObject* containerObject() override { return this; }

    // IQObjectLoadSave
    void save(QObject* object, QDomDocument document, QDomElement element) override;
    void load(QObject* object, QDomDocument document, QDomElement element) override;

private:
    void note(bool taken, const QObject* object, const QString& name, const QString& text);

    QStringList m_refused;
};
