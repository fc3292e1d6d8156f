// Makes the help pages of a library of element types: make_help LIBRARY OUT
// or its gallery, beside whose folder the workbench's is: make_help LIBRARY --gallery PAGE.md

#include "ElementLibrary.h"
#include "GalleryPage.h"
#include "HelpPage.h"

#include <QFile>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const bool isGallery = argc == 4 && qstrcmp(argv[2], "--gallery") == 0;
    if (argc != 3 && !isGallery) {
        std::fputs("usage: make_help LIBRARY OUT | LIBRARY --gallery PAGE.md\n", stderr);
        return 2;
    }
    ElementLibrary library;
    library.load(QString::fromLocal8Bit(argv[1]));
    for (const QString& problem : library.problems()) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
    }
    if (isGallery) {
        const QByteArray page = galleryPage(library, "../workbench/library");
        QFile file(QString::fromLocal8Bit(argv[3]));
        const bool isWritten =
            file.open(QIODevice::WriteOnly) && file.write(page) == page.size() && file.flush();
        return isWritten && library.problems().isEmpty() ? 0 : 1;
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
