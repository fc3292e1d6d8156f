// Makes the help pages of a library of element types: make_help LIBRARY OUT

#include "ElementLibrary.h"
#include "HelpPage.h"

#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: make_help LIBRARY OUT\n", stderr);
        return 2;
    }
    ElementLibrary library;
    library.load(QString::fromLocal8Bit(argv[1]));
    for (const QString& problem : library.problems()) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
    }
    bool isComplete = library.problems().isEmpty();
    for (const QString& type : library.types()) {
        if (!writeHelpPage(*library.description(type), QString::fromLocal8Bit(argv[2]))) {
            std::fprintf(stderr, "cannot write the help page of %s\n", qPrintable(type));
            isComplete = false;
        }
    }
    return isComplete ? 0 : 1;
}
