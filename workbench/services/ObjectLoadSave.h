#pragma once

#include "IQObjectLoadSave.h"

#include <QObject>

/// Persists an object as children of an XML element: `<Property Name="..." Value="..."/>` for each
/// of its stored, readable and writable properties that text can hold, those of QObject itself
/// excepted, and `<Parameter .../>` likewise for each editable property of the group "rparams". A
/// name that the object doesn't have and a value that it can't take are passed over on reading.
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

    // IContainer
    QObject* containerObject() override { return this; }

    // IQObjectLoadSave
    void save(QObject* object, QDomDocument document, QDomElement element) override;
    void load(QObject* object, QDomDocument document, QDomElement element) override;
};
