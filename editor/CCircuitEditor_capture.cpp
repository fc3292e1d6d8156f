// The drawing as a picture.

#include "CCircuitEditorData.h"
#include "CircuitGeometry.h"
#include "ItemTypes.h"
#include "SvgPicture.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QGraphicsItem>
#include <QImage>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QPrinter>
#include <QProcess>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTemporaryDir>

#include <algorithm>
#include <limits>

namespace {

constexpr double PixelsPerUnit = 3;
constexpr int BytesPerPixel = 4;
// The painter leaves all beyond this column or row blank.
constexpr int LargestPainted = 32767;
constexpr int TileSide = 16384;
// What libjpeg takes.
constexpr int LargestJpeg = 65500;
constexpr double LargestSide = 1e9;
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

/// An empty target means the whole device. False also if the picture has been given up.
bool paintScene(const CCircuitEditorData& data, QPaintDevice* device, const QRectF& target,
                const QRectF& source) {
    QPainter painter;
    if (!painter.begin(device)) {
        return false;
    }
    painter.setRenderHints(Hints);
    data.scene->render(&painter, target, source, Qt::KeepAspectRatio);
    return painter.end() && data.picture != CCircuitEditorData::Picture::GivenUp;
}

/// A white image with the scene on it, painted tile by tile. Null if it has been given up or, with
/// a warning, if it is too large to be held.
QImage tiledImage(const CCircuitEditorData& data, const QSize& size, const QRectF& source) {
    const qint64 bytes = qint64(size.width()) * size.height() * BytesPerPixel;
    QImage image;
    if (bytes <= std::numeric_limits<int>::max()) {
        image = QImage(size, QImage::Format_RGB32);
    }
    if (image.isNull()) {
        qWarning(
            "a picture of %d by %d pixels takes %lld MB of memory, which is too much: choose "
            "SVG or PDF",
            size.width(), size.height(), static_cast<long long>(bytes >> 20));
        return image;
    }
    image.fill(Qt::white);
    for (int y = 0; y < size.height(); y += TileSide) {
        for (int x = 0; x < size.width(); x += TileSide) {
            QImage tile(image.scanLine(y) + qint64(x) * BytesPerPixel,
                        std::min(TileSide, size.width() - x), std::min(TileSide, size.height() - y),
                        image.bytesPerLine(), image.format());
            if (!paintScene(data, &tile, QRectF(QPointF(-x, -y), size), source)) {
                return {};
            }
        }
    }
    return image;
}

/// A white pixmap with the scene on it. A size of nothing, or one that can't be held, gives a null
/// pixmap, and so does a picture that has been given up.
QPixmap scenePixmap(const CCircuitEditorData& data, const QSize& size, const QRectF& source) {
    if (std::max(size.width(), size.height()) > LargestPainted ||
        qint64(size.width()) * size.height() * BytesPerPixel > std::numeric_limits<int>::max()) {
        return QPixmap::fromImage(tiledImage(data, size, source));
    }
    QPixmap pixmap(size);
    if (!pixmap.isNull()) {
        pixmap.fill(Qt::white);
        if (!paintScene(data, &pixmap, QRectF(), source)) {
            return {};
        }
    }
    return pixmap;
}

bool writePixmap(const CCircuitEditorData& data, const QString& fileName, const QRectF& source,
                 bool asJpeg) {
    // Kept within what an int holds: the check of the memory refuses such sizes.
    const auto pixels = [](double units) {
        return CircuitGeometry::roundedInt(std::min(units * PixelsPerUnit, LargestSide));
    };
    const QSize size(pixels(source.width()), pixels(source.height()));
    if (asJpeg && std::max(size.width(), size.height()) > LargestJpeg) {
        qWarning(
            "a picture of %d by %d pixels is too large for JPEG, which takes %d in either "
            "direction: choose PNG, SVG or PDF",
            size.width(), size.height(), LargestJpeg);
        return false;
    }
    return scenePixmap(data, size, source).save(fileName, asJpeg ? "JPG" : "PNG", -1);
}

bool printPdf(const CCircuitEditorData& data, const QString& fileName, const QRectF& source) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(fileName);
    if (source.height() < source.width()) {
        printer.setPageOrientation(QPageLayout::Landscape);
    }
    return paintScene(data, &printer, QRectF(), source);
}

/// PostScript is the page of the PDF, converted by a program: no library of another licence comes
/// into a plug-in.
bool printPostScript(const CCircuitEditorData& data, const QString& fileName,
                     const QRectF& source) {
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        qWarning("there is no room for temporary files: %s", qPrintable(folder.errorString()));
        return false;
    }
    const QString pdf = folder.filePath(QStringLiteral("drawing.pdf"));
    if (!printPdf(data, pdf, source)) {
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

bool writeSvg(const CCircuitEditorData& data, const QString& fileName, const QRectF& source) {
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    // That of the screen, or texts would be written smaller than they are laid out.
    const QScreen* screen = QGuiApplication::primaryScreen();
    SvgPicture picture(&file, screen ? qRound(screen->logicalDotsPerInchY()) : 72);
    // It has no size and so no "whole device": the drawing is written in scene units.
    return paintScene(data, &picture, QRectF(QPointF(), source.size()), source) && file.flush();
}

bool isDrawn(int itemType) {
    return itemType == ElementItemType || itemType == ElementNodeItemType ||
           itemType == NodeItemType || itemType == TextBoxItemType ||
           itemType == ElementPropertyTextBoxItemType;
}

}  // namespace

QRectF CCircuitEditorData::pictureRect() const {
    QRectF drawing;
    if (circuitEditor->isExtendedGestures()) {
        // Not what is held over the drawing: a group's rectangle, or what hangs at the pointer.
        for (const QGraphicsItem* item : scene->items()) {
            if (isDrawn(item->type())) {
                drawing |= item->sceneBoundingRect();
            }
        }
    } else {
        drawing = scene->itemsBoundingRect();
    }
    const double m = pictureMargin;
    return drawing.isEmpty() ? drawing : drawing.adjusted(-m, -m, m, m);
}

double CCircuitEditor::pictureMargin() const {
    return d->pictureMargin;
}

void CCircuitEditor::setPictureMargin(double margin) {
    d->pictureMargin = margin;
}

bool CCircuitEditorData::writePicture(CCircuitEditor::CaptureFormat format,
                                      const QString& fileName) {
    const QRectF source = pictureRect();
    const WaitCursor cursor;
    const QScopedValueRollback<Picture> underWay(picture, Picture::UnderWay);
    switch (format) {
        case CCircuitEditor::PS:
            return printPostScript(*this, fileName, source);
        case CCircuitEditor::PDF:
            return printPdf(*this, fileName, source);
        case CCircuitEditor::SVG:
            return writeSvg(*this, fileName, source);
        case CCircuitEditor::JPG:
        case CCircuitEditor::PNG:
            break;
    }
    return writePixmap(*this, fileName, source, format == CCircuitEditor::JPG);
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

void CCircuitEditor::giveUpPicture() {
    if (d->picture == CCircuitEditorData::Picture::UnderWay) {
        d->picture = CCircuitEditorData::Picture::GivenUp;
    }
}

bool CCircuitEditor::hasTurnInPicture() {
    if (d->picture == CCircuitEditorData::Picture::UnderWay) {
        emit pictureProgress();
    }
    return d->picture != CCircuitEditorData::Picture::GivenUp;
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
    const QRectF source = d->pictureRect();
    // Unlike a file, the clipboard's picture follows the present zoom.
    const QSize size = mapFromScene(source).boundingRect().size();
    {
        const WaitCursor cursor;
        QApplication::clipboard()->setPixmap(scenePixmap(*d, size, source), QClipboard::Clipboard);
    }
    QMessageBox::information(this, QStringLiteral("Copied"),
                             QStringLiteral("The circuit diagram was copied into the clipboard"),
                             QMessageBox::Ok);
}
