#pragma once

#include <QByteArray>

/// A place where bytes come in from outside. `run` takes any bytes and ends the program, with a
/// sentence, where they break a promise.
struct FuzzTarget {
    const char* name;
    void (*run)(const QByteArray& bytes);
};

/// Makes the application that the targets run in, without a window.
void startFuzzing(int* argc, char** argv);
/// Ends it. Not called by a program that may end at any place.
void endFuzzing();

/// Null for an unknown name.
const FuzzTarget* fuzzTarget(const QByteArray& name);
