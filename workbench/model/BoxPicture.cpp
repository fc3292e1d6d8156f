#include "BoxPicture.h"

QByteArray BoxPicture::svg(const QSize& half, const QRect& frame, const QVector<QLine>& leads,
                           const QString& texts) {
    QString lines;
    for (const QLine& lead : leads) {
        lines += QStringLiteral("    <line x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%4\"/>\n")
                     .arg(lead.x1())
                     .arg(lead.y1())
                     .arg(lead.x2())
                     .arg(lead.y2());
    }
    const QString head =
        QStringLiteral(
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.2\" baseProfile=\"tiny\" "
            "width=\"%1\" height=\"%2\" viewBox=\"-%3 -%4 %1 %2\">\n")
            .arg(2 * half.width())
            .arg(2 * half.height())
            .arg(half.width())
            .arg(half.height());
    const QString box =
        QStringLiteral(
            "  <g fill=\"none\" stroke=\"#000000\" stroke-width=\"2\" stroke-linecap=\"round\" "
            "stroke-linejoin=\"round\">\n"
            "    <rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\"/>\n")
            .arg(frame.x())
            .arg(frame.y())
            .arg(frame.width())
            .arg(frame.height());
    return (head + box + lines + QStringLiteral("  </g>\n") + texts + QStringLiteral("</svg>\n"))
        .toUtf8();
}
