#pragma once

#include <QStringList>

/// Tells that the running test causes a log line that contains the text. Lines of the log that no
/// test has announced fail the test that causes them; an announcement holds until the test ends.
void announceLog(const QString& text);

/// How many lines with the text the running test has caused so far.
int loggedCount(const QString& text);

/// Such lines of the running test so far, which fail it when it ends.
QStringList unannouncedLog();

/// Installs the message handler and the listener that ties it to the tests.
void installWarningGuard();
