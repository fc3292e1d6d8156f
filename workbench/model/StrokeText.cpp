#include "StrokeText.h"

#include <QHash>
#include <QStringList>

namespace StrokeText {

namespace {

/// Of the grid that the strokes are given on: 4 wide, 6 high.
constexpr double Unit = Height / 6;
constexpr double Width = 4 * Unit;

/// Lines apart by blanks, each a row of points "xy".
const QHash<QChar, const char*>& strokes() {
    static const QHash<QChar, const char*> table = {
        {'A', "062046 1434"},
        {'B', "06003041323303 3344453606"},
        {'C', "4130100105163645"},
        {'D', "00062645412000"},
        {'E', "40000646 0333"},
        {'F', "400006 0333"},
        {'G', "41301001051636454323"},
        {'H', "0006 4046 0343"},
        {'I', "1030 2026 1636"},
        {'J', "4045361605"},
        {'K', "0006 400346"},
        {'L', "000646"},
        {'M', "0600234046"},
        {'N', "06004640"},
        {'O', "103041453616050110"},
        {'P', "06003041323303"},
        {'Q', "103041453616050110 2446"},
        {'R', "06003041323303 2346"},
        {'S', "413010010213334445361605"},
        {'T', "0040 2026"},
        {'U', "000516364540"},
        {'V', "002640"},
        {'W', "0016233640"},
        {'X', "0046 4006"},
        {'Y', "002340 2326"},
        {'Z', "00400646"},
        {'0', "103041453616050110 3115"},
        {'1', "112026 1636"},
        {'2', "01103041420646"},
        {'3', "01103041423313 334445361605"},
        {'4', "36300444"},
        {'5', "400003334445361605"},
        {'6', "4130100105163645443303"},
        {'7', "004016"},
        {'8', "103041423313020110 1304051636454433"},
        {'9', "0516364541301001021343"},
        {'+', "2125 0343"},
        {'-', "0343"},
        {'_', "0646"},
        {'.', "2526"},
        {'/', "0640"},
        {' ', ""},
    };
    return table;
}

}  // namespace

QString path(const QString& text, const QPointF& place, Anchor anchor) {
    const double length = text.size() * Advance - (Advance - Width);
    const double share = anchor == Anchor::Left ? 0 : anchor == Anchor::Middle ? 0.5 : 1;
    QPointF corner(place.x() - share * length, place.y() - Height / 2);
    QString data;
    for (const QChar letter : text.toUpper()) {
        const QString glyph = QLatin1String(strokes().value(letter, "0040460600"));
        for (const QString& line : glyph.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            for (int i = 0; i + 1 < line.size(); i += 2) {
                data += QStringLiteral("%1%2,%3 ")
                            .arg(QLatin1Char(i == 0 ? 'M' : 'L'))
                            .arg(corner.x() + line.at(i).digitValue() * Unit)
                            .arg(corner.y() + line.at(i + 1).digitValue() * Unit);
            }
        }
        corner.rx() += Advance;
    }
    return data.trimmed();
}

}  // namespace StrokeText
