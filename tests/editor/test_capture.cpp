// The drawing as a picture.

#include "CCircuitEditorElementItem.h"
#include "DialogDriver.h"
#include "EditorTest.h"
#include "WarningGuard.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTest>

namespace {

class Capture : public EditorTest {
protected:
    QByteArray content(const QString& fileName) {
        QFile file(fileName);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Page size in points, as the file states it.
    QSizeF pageSize(const QByteArray& text, const char* pattern) {
        const auto match = QRegularExpression(QString::fromLatin1(pattern))
                               .match(QString::fromLatin1(text.constData(), text.size()));
        EXPECT_TRUE(match.hasMatch()) << pattern;
        return {match.captured(1).toDouble(), match.captured(2).toDouble()};
    }
};

}  // namespace

TEST_F(Capture, PixmapsAreThreeTimesTheDrawingOnWhite) {
    add("Resistor.Basic", {0, 0});
    add("Resistor.Basic", {200, 0});
    join("R1.n", "R2.p");
    const QString file = tempFile(QStringLiteral("a.png"));
    EXPECT_TRUE(editor->captureToFile(CCircuitEditor::PNG, file));
    const QImage image(file);
    EXPECT_EQ(image.size(), QSize(810, 120));  // 270 by 40 units: no half unit of pen around it
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::white));
    // The wire, at scene (115, 0).
    EXPECT_EQ(image.pixelColor((115 + 35) * 3, 60), terminal(QStringLiteral("R1.n"))->color());
    EXPECT_TRUE(editor->captureToFile(CCircuitEditor::JPG, tempFile(QStringLiteral("a.jpg"))));
    EXPECT_EQ(QImage(tempFile(QStringLiteral("a.jpg"))).size(), QSize(810, 120));
    EXPECT_FALSE(editor->captureToFile(CCircuitEditor::PNG, tempFile(QStringLiteral("no/a.png"))));
    EXPECT_FALSE(editor->captureToFile(7, file));
}

TEST_F(Capture, WidePicturesAreWholeOrRefused) {
    add("Resistor.Basic", {0, 0});
    add("Resistor.Basic", {11000, 0});
    const QString png = tempFile(QStringLiteral("a.png"));
    ASSERT_TRUE(editor->captureToFile(CCircuitEditor::PNG, png));
    const QImage image(png);
    ASSERT_EQ(image.size(), QSize(33210, 120));
    // Both are the same picture, the second beyond what a painter reaches.
    EXPECT_EQ(image.copy(33000, 0, 210, 120), image.copy(0, 0, 210, 120));
    add("Resistor.Basic", {22000, 0});
    const QString jpg = tempFile(QStringLiteral("a.jpg"));
    announceLog("a picture of 66210 by 120 pixels is too large for JPEG");
    EXPECT_FALSE(editor->captureToFile(CCircuitEditor::JPG, jpg));
    EXPECT_FALSE(QFile::exists(jpg));
    add("Resistor.Basic", {22000, 22000});
    announceLog("a picture of 66210 by 66120 pixels takes 16700 MB of memory");
    EXPECT_FALSE(editor->captureToFile(CCircuitEditor::PNG, jpg));
    EXPECT_FALSE(QFile::exists(jpg));
}

TEST_F(Capture, LeavesOutGridAndSelectionButKeepsTheHighlight) {
    add("Resistor.Basic", {0, 0});
    const QString file = tempFile(QStringLiteral("a.png"));
    ASSERT_TRUE(editor->captureToFile(CCircuitEditor::PNG, file));
    const QImage plain(file);
    itemOf(element(QStringLiteral("R1")))->setSelected(true);
    editor->setBackgroundColorRGB(255, 0, 0);
    ASSERT_TRUE(editor->captureToFile(CCircuitEditor::PNG, file));
    EXPECT_EQ(QImage(file), plain);
    EXPECT_FALSE(itemOf(element(QStringLiteral("R1")))->isSelected());
    editor->highlight(element(QStringLiteral("R1")));
    ASSERT_TRUE(editor->captureToFile(CCircuitEditor::PNG, file));
    EXPECT_NE(QImage(file), plain);
}

TEST_F(Capture, PrintedPagesTurnWithTheDrawing) {
    add("Resistor.Basic", {0, 0});
    for (const bool wide : {true, false}) {
        if (!wide) {
            element(QStringLiteral("R1"))->setRotation(1);
        }
        const QString pdf = tempFile(QStringLiteral("a.pdf"));
        const QString ps = tempFile(QStringLiteral("a.ps"));
        ASSERT_TRUE(editor->captureToFile(CCircuitEditor::PDF, pdf));
        ASSERT_TRUE(editor->captureToFile(CCircuitEditor::PS, ps));
        const QSizeF pdfPage = pageSize(content(pdf), "/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]");
        const QSizeF psPage = pageSize(content(ps), "DocumentMedia: \\S+ ([0-9.]+) ([0-9.]+)");
        EXPECT_EQ(pdfPage.width() > pdfPage.height(), wide);
        EXPECT_NEAR(psPage.width(), pdfPage.width(), 1);
        EXPECT_NEAR(psPage.height(), pdfPage.height(), 1);
    }
}

TEST_F(Capture, SvgShowsTheDrawingUprightInSceneUnits) {
    add("DCVoltage.Sources", {0, 0});
    add("DCVoltage.Sources", {100, 100})->setRotation(1);
    add("DCVoltage.Sources", {0, 100})->setFlip(1);
    join("V1.p", "V2.n");
    QMetaObject::invokeMethod(itemOf(element(QStringLiteral("V3"))),
                              "createElementPropertyTextBoxForCaptionProperty");
    const QString svg = tempFile(QStringLiteral("a.svg"));
    ASSERT_TRUE(editor->captureToFile(CCircuitEditor::SVG, svg));
    const QString png = tempFile(QStringLiteral("a.png"));
    ASSERT_TRUE(editor->captureToFile(CCircuitEditor::PNG, png));
    const QImage expected = QImage(png).convertToFormat(QImage::Format_RGB32);
    QImage drawn(expected.size(), QImage::Format_RGB32);
    drawn.fill(Qt::white);
    QSvgRenderer renderer(svg);
    ASSERT_TRUE(renderer.isValid());
    renderer.setViewBox(QRectF(0, 0, expected.width() / 3.0, expected.height() / 3.0));
    QPainter painter(&drawn);
    renderer.render(&painter);
    painter.end();
    qint64 difference = 0;
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x) {
            difference += std::abs(qGray(drawn.pixel(x, y)) - qGray(expected.pixel(x, y)));
        }
    }
    EXPECT_LT(difference / (255.0 * drawn.width() * drawn.height()), 0.003);
    // One symbol, and the discs of two terminals or of one kind of them.
    EXPECT_LE(content(svg).count("<defs>"), 3);
    EXPECT_FALSE(editor->captureToFile(CCircuitEditor::SVG, QStringLiteral("/dev/full")));
}

TEST_F(Capture, AsksForANameAndTellsOfTheSuccess) {
    add("Resistor.Basic", {0, 0});
    auto* item = itemOf(element(QStringLiteral("R1")));
    item->setSelected(true);
    editor->setDefaultPSPath(tempFile(QString()));
    {
        DialogDriver driver;
        driver.reject();
        editor->captureToPDF();
        EXPECT_EQ(driver.titles, QStringList{"Choose a PDF file name to save"});
        EXPECT_TRUE(item->isSelected());
    }
    const struct {
        void (CCircuitEditor::*capture)();
        const char* name;
        const char* file;
    } rows[] = {{&CCircuitEditor::captureToPS, "PostScript", "b.ps"},
                {&CCircuitEditor::captureToPDF, "PDF", "b.pdf"},
                {&CCircuitEditor::captureToJPG, "JPEG", "b.jpg"},
                {&CCircuitEditor::captureToPNG, "PNG", "b.png"},
                {&CCircuitEditor::captureToSVG, "SVG", "b.svg"}};
    for (const auto& row : rows) {
        DialogDriver driver;
        const QString file = tempFile(QString::fromLatin1(row.file));
        driver.chooseFile(file);
        driver.accept();
        (editor.get()->*row.capture)();
        const QString name = QString::fromLatin1(row.name);
        EXPECT_EQ(driver.titles,
                  (QStringList{QStringLiteral("Choose a %1 file name to save").arg(name),
                               QStringLiteral("%1 saved").arg(name)}));
        EXPECT_EQ(driver.texts.value(1),
                  QStringLiteral("The circuit diagram was saved into the %1 file").arg(name));
        EXPECT_GT(QFileInfo(file).size(), 0) << row.file;
        EXPECT_FALSE(item->isSelected());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
}

TEST_F(Capture, TheGridComesBackWhenTheBoxIsClosed) {
    editor->setGridColorRGB(0, 0, 0);
    editor->resize(200, 200);
    const QImage before = editor->grab().toImage();
    DialogDriver driver;
    driver.chooseFile(tempFile(QStringLiteral("empty.png")));
    driver.queue([&](QWidget* box) {
        EXPECT_NE(editor->grab().toImage(), before);
        QMetaObject::invokeMethod(box, "accept");
    });
    editor->captureToPNG();  // of nothing: the success is told all the same
    EXPECT_EQ(editor->grab().toImage(), before);
}

TEST_F(Capture, TheClipboardFollowsTheZoom) {
    add("Resistor.Basic", {0, 0});
    editor->setTransform(QTransform::fromScale(2, 2));
    DialogDriver driver;
    driver.accept();
    editor->captureToClipboard();
    EXPECT_EQ(driver.titles, QStringList{"Copied"});
    EXPECT_EQ(driver.texts, QStringList{"The circuit diagram was copied into the clipboard"});
    const QRect shown = editor->mapFromScene(editor->scene()->itemsBoundingRect()).boundingRect();
    EXPECT_EQ(QApplication::clipboard()->pixmap().size(), shown.size());
    EXPECT_GE(shown.width(), 120);
}
