#include "Clipboard.h"
#include "HostFixture.h"

#include <QPixmap>

namespace {

ClipboardData entry(const QString& text) {
    return {QIcon(), text, "about " + text};
}

/// The texts of the active context, by rising index.
QStringList texts(IClipboard& clipboard) {
    QStringList result;
    for (int i = 0; i < clipboard.dataCount(); ++i) {
        result << clipboard.data(i).data.toString();
    }
    return result;
}

}  // namespace

TEST(ClipboardService, KeepsEachContextsEntriesNewestFirst) {
    Clipboard service;
    IClipboard* clipboard = &service;
    QStringList log;
    QObject::connect(&service, &Clipboard::entriesChanged,
                     [&](const QString& context) { log << "entries " + context; });
    QObject::connect(&service, &Clipboard::activeContextChanged,
                     [&](const QString& context) { log << "active " + context; });
    clipboard->addData(entry("lost"));
    clipboard->addContext("");
    clipboard->setActiveContext("");
    EXPECT_EQ(clipboard->dataCount(), 0);
    EXPECT_EQ(log, QStringList());

    clipboard->addContext("Drawing");  // the first is active at once
    clipboard->addData(entry("a"));
    clipboard->addData(entry("b"));
    clipboard->addContext("Text");
    clipboard->addContext("Drawing");
    EXPECT_EQ(texts(service), QStringList({"b", "a"}));
    EXPECT_EQ(clipboard->data(1).description, "about a");
    for (int index : {-2, -1, 2, 1000}) {
        EXPECT_TRUE(clipboard->data(index).data.isNull()) << index;
    }
    clipboard->setActiveContext("Text");
    clipboard->setActiveContext("Text");
    EXPECT_EQ(clipboard->dataCount(), 0);
    service.clear();  // nothing to tell
    clipboard->setActiveContext("Unknown");
    clipboard->addData(entry("c"));
    clipboard->setActiveContext("Drawing");
    EXPECT_EQ(texts(service), QStringList({"b", "a"}));
    service.clear();
    EXPECT_EQ(clipboard->dataCount(), 0);
    clipboard->setActiveContext("Unknown");
    EXPECT_EQ(texts(service), QStringList("c"));
    EXPECT_EQ(log, QStringList({"active Drawing", "entries Drawing", "entries Drawing",
                                "active Text", "active Unknown", "entries Unknown",
                                "active Drawing", "entries Drawing", "active Unknown"}));
}

TEST(ClipboardService, KeepsNoMoreThanItCanShow) {
    Clipboard service;
    service.addContext("Drawing");
    for (int i = 0; i < Clipboard::MostEntries + 3; ++i) {
        service.addData(entry(QString::number(i)));
    }
    EXPECT_EQ(service.dataCount(), Clipboard::MostEntries);
    EXPECT_EQ(service.data(0).data, Clipboard::MostEntries + 2);
    EXPECT_EQ(texts(service).last(), "3");

    for (const QSize& size : {QSize(2048, 1024), QSize(60, 30)}) {
        QPixmap picture(size);
        picture.fill(Qt::red);
        service.addData({picture, "group", ""});
        const QSize kept = service.data(0).icon.availableSizes().value(0);
        EXPECT_EQ(kept, size.width() > 512 ? QSize(512, 256) : size);
    }
}
