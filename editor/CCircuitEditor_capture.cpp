// The drawing as a picture.

#include "CCircuitEditorData.h"
#include "CircuitGeometry.h"
#include "SvgPicture.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QPrinter>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>

namespace {

constexpr double PixelsPerUnit = 3;
constexpr QPainter::RenderHints Hints =
    QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform;

struct FormatNames {
    const char* message;
    const char* filter;
};

// By value of CaptureFormat.
constexpr FormatNames Names[] = {{"PostScript", "PostScript files (*.ps)"},
                                 {"PDF", "Adobe PDF files (*.pdf)"},
                                 {"JPEG", "JPEG files (*.jpg)"},
                                 {"PNG", "PNG files (*.png)"},
                                 {"SVG", "SVG files (*.svg)"}};

class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY(WaitCursor)
};

/// No grid and nothing selected, for as long as it lives. Dialogs run event loops of their own, in
/// which the editor may be deleted, and its data with it.
class PictureTime {
public:
    PictureTime(const CCircuitEditor* editor, CCircuitEditorData* data)
        : m_editor(editor), m_data(data), m_wasGridVisible(data->gridVisible) {
        data->gridVisible = false;
        data->scene->clearSelection();
    }
    ~PictureTime() {
        if (m_editor) {
            m_data->gridVisible = m_wasGridVisible;
        }
    }
    Q_DISABLE_COPY(PictureTime)

private:
    QPointer<const CCircuitEditor> m_editor;
    CCircuitEditorData* m_data;
    bool m_wasGridVisible;
};

/// An empty target means the whole device.
bool paintScene(QGraphicsScene* scene, QPaintDevice* device, const QRectF& target,
                const QRectF& source) {
    QPainter painter;
    if (!painter.begin(device)) {
        return false;
    }
    painter.setRenderHints(Hints);
    scene->render(&painter, target, source, Qt::KeepAspectRatio);
    return painter.end();
}

/// A white pixmap with the scene on it. A size of nothing gives a null pixmap.
QPixmap scenePixmap(QGraphicsScene* scene, const QSize& size, const QRectF& source) {
    QPixmap pixmap(size);
    if (!pixmap.isNull()) {
        pixmap.fill(Qt::white);
        paintScene(scene, &pixmap, QRectF(), source);
    }
    return pixmap;
}

bool printPdf(QGraphicsScene* scene, const QString& fileName, const QRectF& source) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(fileName);
    if (source.height() < source.width()) {
        printer.setPageOrientation(QPageLayout::Landscape);
    }
    return paintScene(scene, &printer, QRectF(), source);
}

/// PostScript is the page of the PDF, converted by a program: no library of another licence comes
/// into a plug-in.
bool printPostScript(QGraphicsScene* scene, const QString& fileName, const QRectF& source) {
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        qWarning("there is no room for temporary files: %s", qPrintable(folder.errorString()));
        return false;
    }
    const QString pdf = folder.filePath(QStringLiteral("drawing.pdf"));
    if (!printPdf(scene, pdf, source)) {
        return false;
    }
    QProcess converter;
    // Its remarks are for nobody who draws circuits.
    converter.setStandardErrorFile(QProcess::nullDevice());
    converter.start(QStringLiteral("pdftops"), {pdf, fileName});
    if (!converter.waitForStarted()) {
        qWarning("the program pdftops, which makes PostScript, cannot be started");
        return false;
    }
    return converter.waitForFinished(-1) && converter.exitStatus() == QProcess::NormalExit &&
           converter.exitCode() == 0;
}

bool writeSvg(QGraphicsScene* scene, const QString& fileName, const QRectF& source) {
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    // That of the screen, or texts would be written smaller than they are laid out.
    const QScreen* screen = QGuiApplication::primaryScreen();
    SvgPicture picture(&file, screen ? qRound(screen->logicalDotsPerInchY()) : 72);
    // It has no size and so no "whole device": the drawing is written in scene units.
    return paintScene(scene, &picture, QRectF(QPointF(), source.size()), source) && file.flush();
}

}  // namespace

bool CCircuitEditorData::writePicture(CCircuitEditor::CaptureFormat format,
                                      const QString& fileName) {
    const QRectF source = scene->itemsBoundingRect();
    const WaitCursor cursor;
    switch (format) {
        case CCircuitEditor::PS:
            return printPostScript(scene, fileName, source);
        case CCircuitEditor::PDF:
            return printPdf(scene, fileName, source);
        case CCircuitEditor::SVG:
            return writeSvg(scene, fileName, source);
        case CCircuitEditor::JPG:
        case CCircuitEditor::PNG:
            break;
    }
    const QSize size(CircuitGeometry::roundedInt(source.width() * PixelsPerUnit),
                     CircuitGeometry::roundedInt(source.height() * PixelsPerUnit));
    return scenePixmap(scene, size, source)
        .save(fileName, format == CCircuitEditor::JPG ? "JPG" : "PNG", -1);
}

void CCircuitEditor::captureTo(CaptureFormat format) {
    if (!d->scene) {
        return;
    }
    const QPointer<CCircuitEditor> self(this);
    const QString name = QString::fromLatin1(Names[format].message);
    const QString fileName = QFileDialog::getSaveFileName(
        this, QStringLiteral("Choose a %1 file name to save").arg(name), d->defaultPSPath,
        QString::fromLatin1(Names[format].filter));
    if (fileName.isEmpty() || !self || !d->scene) {
        return;
    }
    // The grid stays away until the box has been answered.
    const PictureTime time(this, d.get());
    d->writePicture(format, fileName);
    QMessageBox::information(
        this, QStringLiteral("%1 saved").arg(name),
        QStringLiteral("The circuit diagram was saved into the %1 file").arg(name),
        QMessageBox::Ok);
}

bool CCircuitEditor::captureToFile(int format, const QString& fileName) {
    if (format < PS || format > SVG || !d->scene) {
        return false;
    }
    const PictureTime time(this, d.get());
    return d->writePicture(static_cast<CaptureFormat>(format), fileName);
}

void CCircuitEditor::captureToPS() {
    captureTo(PS);
}

void CCircuitEditor::captureToPDF() {
    captureTo(PDF);
}

void CCircuitEditor::captureToJPG() {
    captureTo(JPG);
}

void CCircuitEditor::captureToPNG() {
    captureTo(PNG);
}

void CCircuitEditor::captureToSVG() {
    captureTo(SVG);
}

void CCircuitEditor::captureToClipboard() {
    if (!d->scene) {
        return;
    }
    const PictureTime time(this, d.get());
    const QRectF source = d->scene->itemsBoundingRect();
    // Unlike a file, the clipboard's picture follows the present zoom.
    const QSize size = mapFromScene(source).boundingRect().size();
    {
        const WaitCursor cursor;
        QApplication::clipboard()->setPixmap(scenePixmap(d->scene, size, source),
                                             QClipboard::Clipboard);
    }
    QMessageBox::information(this, QStringLiteral("Copied"),
                             QStringLiteral("The circuit diagram was copied into the clipboard"),
                             QMessageBox::Ok);
}
