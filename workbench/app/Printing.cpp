#include "Printing.h"

#include "HeldMessages.h"
#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitTitle.h"
#include "MainWindow.h"
#include "PictureFile.h"
#include "ProjectManager.h"
#include "Settings.h"
#include "Workbench.h"

#include <QDir>
#include <QFileInfo>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QMessageBox>
#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QSvgRenderer>
#include <QTemporaryDir>

#include <algorithm>
#include <functional>
#include <optional>

namespace {

const QString SizeKey = QStringLiteral("PageSize");
const QString LandscapeKey = QStringLiteral("PageLandscape");
const QString MarginsKey = QStringLiteral("PageMargins");

constexpr double DefaultMargin = 15;  // millimetres
// A scene unit is a quarter of a millimetre in natural size, a grid step of 10 the 2.5 mm of a
// lead.
constexpr double LargestUnit = 0.5;  // millimetres
constexpr double MillimetresPerInch = 25.4;
constexpr int TitlePointSize = 10;
constexpr double TitleGap = 3;  // millimetres

}  // namespace

Printing::Printing(Workbench* workbench, MainWindow* window)
    : QObject(window), m_workbench(workbench), m_window(window) {}

QPageLayout Printing::layout() const {
    const Settings settings;
    const int size = settings.value(SizeKey, int(QPageSize::A4)).toInt();
    const bool isKnown = size >= 0 && size < int(QPageSize::Custom);
    QPageLayout layout(QPageSize(isKnown ? QPageSize::PageSizeId(size) : QPageSize::A4),
                       settings.value(LandscapeKey, true).toBool() ? QPageLayout::Landscape
                                                                   : QPageLayout::Portrait,
                       QMarginsF(DefaultMargin, DefaultMargin, DefaultMargin, DefaultMargin),
                       QPageLayout::Millimeter);
    const QStringList margins = settings.value(MarginsKey).toString().split(QLatin1Char(' '));
    if (margins.size() == 4) {
        // A page without room keeps the margins that it has.
        layout.setMargins({margins.at(0).toDouble(), margins.at(1).toDouble(),
                           margins.at(2).toDouble(), margins.at(3).toDouble()});
    }
    return layout;
}

void Printing::keepLayout(const QPageLayout& layout) {
    Settings settings;
    const QMarginsF margins = layout.margins(QPageLayout::Millimeter);
    settings.setValue(SizeKey, int(layout.pageSize().id()));
    settings.setValue(LandscapeKey, layout.orientation() == QPageLayout::Landscape);
    settings.setValue(MarginsKey, QStringLiteral("%1 %2 %3 %4")
                                      .arg(margins.left())
                                      .arg(margins.top())
                                      .arg(margins.right())
                                      .arg(margins.bottom()));
}

QString Printing::title() const {
    auto* titled = qobject_cast<ICircuitTitle*>(m_workbench->circuit()->containerObject());
    const QString title = titled ? titled->title() : QString();
    return title.isEmpty()
               ? QFileInfo(m_workbench->projectManager()->projectFileName()).completeBaseName()
               : title;
}

void Printing::tell(const QString& error) {
    QMessageBox::information(m_window, tr("Cannot print"), error);
}

bool Printing::paint(QPrinter* printer, QString* error) {
    // What hangs at the pointer is no part of the drawing.
    QMetaObject::invokeMethod(m_workbench->editorWidget(), "stopPlacing");
    const QList<QGraphicsItem*> items = m_workbench->canvas()->graphicsScene()->items();
    if (std::none_of(items.begin(), items.end(), std::mem_fn(&QGraphicsItem::isVisible))) {
        *error = tr("the drawing is empty");
        return false;
    }
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("page.svg"));
    if (!m_workbench->savePicture({PictureFormat::SVG, file}, error)) {
        return false;
    }
    QSvgRenderer picture(file);
    QPainter painter;
    bool hasBegun = false;
    {
        const HeldMessages messages;
        hasBegun = picture.isValid() && painter.begin(printer);
    }
    if (!hasBegun) {
        const QString printed = printer->outputFileName();
        *error = printed.isEmpty()
                     ? tr("the printer %1 takes no page").arg(printer->printerName())
                     : tr("the file %1 takes no page").arg(QDir::toNativeSeparators(printed));
        return false;
    }
    const double perMillimetre = printer->resolution() / MillimetresPerInch;
    QRectF room(QPointF(0, 0),
                QSizeF(printer->pageLayout().paintRectPixels(printer->resolution()).size()));
    QFont font = painter.font();
    font.setPointSize(TitlePointSize);
    painter.setFont(font);
    const QString text = title();
    if (!text.isEmpty()) {
        painter.drawText(room, Qt::AlignRight | Qt::AlignBottom,
                         painter.fontMetrics().elidedText(text, Qt::ElideRight, int(room.width())));
        room.setBottom(room.bottom() - painter.fontMetrics().height() - TitleGap * perMillimetre);
    }
    const QSizeF natural = picture.viewBoxF().size();
    const double scale = std::min({room.width() / natural.width(), room.height() / natural.height(),
                                   LargestUnit * perMillimetre});
    QRectF target(QPointF(), natural * scale);
    target.moveCenter(room.center());
    picture.render(&painter, target);
    return painter.end();
}

void Printing::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(layout());
    printer.setDocName(title());
    QPrintDialog dialog(&printer, m_window);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    keepLayout(printer.pageLayout());
    QString error;
    if (!paint(&printer, &error)) {
        tell(error);
    }
}

void Printing::preview() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(layout());
    printer.setDocName(title());
    QString error;
    QPrintPreviewDialog dialog(&printer, m_window);
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this,
            [this, &error](QPrinter* page) { paint(page, &error); });
    dialog.exec();
    keepLayout(printer.pageLayout());
    if (!error.isEmpty()) {
        tell(error);
    }
}

void Printing::setUpPage() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(layout());
    std::optional<QPageSetupDialog> dialog;
    {
        // Qt warns of what does no harm where no printer is installed.
        const HeldMessages messages;
        dialog.emplace(&printer, m_window);
    }
    if (dialog->exec() == QDialog::Accepted) {
        keepLayout(printer.pageLayout());
    }
}
