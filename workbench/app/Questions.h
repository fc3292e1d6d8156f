#pragma once

#include <QString>
#include <QStringList>

class Autosave;
class QWidget;

// What the window asks its user before something is lost.

enum class SaveAnswer { Save, Discard, Cancel };
SaveAnswer askToSave(QWidget* parent, const QString& name);

enum class RecoverAnswer { Recover, Discard, Cancel };
RecoverAnswer askToRecover(QWidget* parent, const Autosave& autosave);

/// What became of those parts of an imported drawing that have no counterpart, a sentence each.
void tellRemarks(QWidget* parent, const QString& name, const QStringList& remarks);

/// True if the user wants to replace the file, which another program has changed in the meantime.
bool askToReplaceChanged(QWidget* parent, const QString& fileName);

/// True if the user wants to save in spite of what gets lost by it, which is one sentence without
/// the full stop.
bool askToSaveDespite(QWidget* parent, const QString& losses);
