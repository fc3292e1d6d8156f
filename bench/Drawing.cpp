#include "Drawing.h"

#include "CircuitGenerator.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>

namespace {

const ElementLibrary& shippedLibrary() {
    static const std::unique_ptr<ElementLibrary> library = [] {
        auto loaded = std::make_unique<ElementLibrary>();
        loaded->load(QStringLiteral(VORTEL_LIBRARY_DIR));
        return loaded;
    }();
    return *library;
}

}  // namespace

Drawing::Drawing(int elementCount) : Drawing(circuitFileText(elementCount)) {}

Drawing::Drawing(const QByteArray& circuitFile)
    : factory(shippedLibrary()),
      editor(std::make_unique<CCircuitEditor>()),
      m_file(outputFile(QStringLiteral("generated.ckt"))) {
    QFile file(m_file);
    if (!file.open(QIODevice::WriteOnly) || file.write(circuitFile) != circuitFile.size()) {
        qFatal("cannot write %s", qPrintable(m_file));
    }
    editor->setCircuitElementFactory(&factory);
    editor->setXmlUtils(&xmlUtils);
    editor->setQObjectLoadSave(&loadSave);
    editor->setCircuitSolver(&solver);
}

void Drawing::load() {
    editor->load(m_file);
}

void Drawing::settle() {
    QCoreApplication::processEvents();
}

void Drawing::clear() {
    editor->clear();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
