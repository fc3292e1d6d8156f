// What the window looks like, read off its pixels.

#include "DarkCanvas.h"
#include "PictureFile.h"
#include "WindowTest.h"

#include <QDockWidget>
#include <QImage>
#include <QLabel>

class Look : public WindowTest {
protected:
    QImage shown() {
        QApplication::processEvents();
        return view()->viewport()->grab().toImage();
    }
};

TEST_F(Look, EmptyCanvasSaysHowToBegin) {
    auto* hint = window->findChild<QLabel*>("emptyHint");
    const auto isShown = [hint] {
        QApplication::processEvents();
        return hint->isVisible();
    };
    EXPECT_TRUE(isShown());
    EXPECT_TRUE(view()->viewport()->rect().contains(hint->geometry()));
    addResistor();
    EXPECT_FALSE(isShown());
    circuit()->removeElement(circuit()->element(0));
    EXPECT_TRUE(isShown());
}

TEST_F(Look, DarkCanvasIsForTheScreenOnly) {
    EXPECT_EQ(DarkCanvas::darkened(qRgb(255, 255, 255)), qRgb(30, 30, 30));
    EXPECT_EQ(DarkCanvas::darkened(qRgb(0, 0, 0)), qRgb(255, 255, 255));
    const QColor ink(0x1F, 0x4E, 0x8C);
    const QColor light(DarkCanvas::darkened(ink.rgb()));
    EXPECT_NEAR(light.hslHue(), ink.hslHue(), 3);
    EXPECT_GT(light.lightness(), 150);

    addResistor();
    const QImage white = shown();
    trigger("darkCanvas");
    const QImage dark = shown();
    ASSERT_EQ(dark.size(), white.size());
    for (int x = 0; x < white.width(); x += 7) {
        for (int y = 0; y < white.height(); y += 7) {
            EXPECT_EQ(dark.pixel(x, y), DarkCanvas::darkened(white.pixel(x, y)));
        }
    }
    const QString file = folder.filePath("page.png");
    QString error;
    ASSERT_TRUE(workbench.savePicture({PictureFormat::PNG, file}, &error)) << qPrintable(error);
    EXPECT_EQ(QImage(file).pixel(0, 0), qRgb(255, 255, 255));
    trigger("darkCanvas");
    EXPECT_EQ(shown(), white);
}

TEST(WindowLayout, LastsFromStartToStart) {
    const auto withWindow = [](const auto& use) {
        Workbench workbench;
        MainWindow window(&workbench);
        QString error;
        ASSERT_TRUE(workbench.start(QStringLiteral(VORTEL_BIN_DIR "/libcircuiteditor.so"), &window,
                                    &error));
        ASSERT_TRUE(window.build(&error)) << qPrintable(error);
        window.show();
        QApplication::processEvents();
        use(window);
        window.close();
    };
    const auto dock = [](MainWindow& window, const char* name) {
        return window.findChild<QDockWidget*>(QLatin1String(name));
    };
    withWindow([&](MainWindow& window) {
        window.resize(700, 560);
        dock(window, "showElements")->hide();
        dock(window, "showClipboard")->show();
    });
    withWindow([&](MainWindow& window) {
        EXPECT_EQ(window.size(), QSize(700, 560));
        EXPECT_FALSE(dock(window, "showElements")->isVisible());
        EXPECT_TRUE(dock(window, "showClipboard")->isVisible());
        dock(window, "showElements")->show();
        dock(window, "showClipboard")->hide();
    });
}
