// Makes a sub-circuit type of a project: make_subcircuit LIBRARY PROJECT FOLDER/NAME

#include "ElementLibrary.h"
#include "TypeMaker.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        std::fputs("usage: make_subcircuit LIBRARY PROJECT FOLDER/NAME\n", stderr);
        return 2;
    }
    ElementLibrary library;
    library.load(arguments.at(1));
    const QString problem = makeSubCircuitType(library, arguments.at(2), arguments.at(3));
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 1;
    }
    return 0;
}
