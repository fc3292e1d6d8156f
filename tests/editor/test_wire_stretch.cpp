// How wires laid by hand follow terminals that move, and where their branches meet.

#include "EditorTest.h"
#include "NetJunctions.h"
#include "WireStretch.h"

#include <QStringList>

namespace {

/// "0,0 100,0; 50,0 50,40": a branch, and another one.
QPainterPath pathOf(const QString& text) {
    QPainterPath path;
    for (const QString& part : text.split(QStringLiteral("; "), Qt::SkipEmptyParts)) {
        bool isFirst = true;
        for (const QString& point : part.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            const QPointF p(point.section(QLatin1Char(','), 0, 0).toDouble(),
                            point.section(QLatin1Char(','), 1).toDouble());
            isFirst ? path.moveTo(p) : path.lineTo(p);
            isFirst = false;
        }
    }
    return path;
}

QString textOf(const QPainterPath& path) {
    QString text;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element at = path.elementAt(i);
        text += QLatin1String(i == 0          ? ""
                              : at.isMoveTo() ? "; "
                                              : " ") +
                QStringLiteral("%1,%2").arg(at.x).arg(at.y);
    }
    return text;
}

QVector<QPointF> pointsOf(const QString& text) {
    QVector<QPointF> points;
    const QPainterPath path = pathOf(text);
    for (int i = 0; i < path.elementCount(); ++i) {
        points.append(path.elementAt(i));
    }
    return points;
}

}  // namespace

TEST(WireStretch, LeadsEndsWithAsFewCornersAsCanBe) {
    const struct {
        const char* name;
        const char* path;
        const char* moves;  // from to, from to
        const char* fixed;
        const char* result;
    } rows[] = {
        {"along the end", "0,0 100,0", "0,0 -20,0", "100,0", "-20,0 100,0"},
        {"across a single run", "0,0 100,0", "0,0 0,30", "100,0", "0,30 0,0 100,0"},
        {"both ways", "0,0 100,0", "0,0 20,30", "100,0", "20,30 20,0 100,0"},
        {"beyond the other end", "0,0 100,0", "0,0 130,30", "100,0", "130,30 100,30 100,0"},
        {"the corner slides", "0,0 50,0 50,80 100,80", "0,0 10,20", "100,80",
         "10,20 50,20 50,80 100,80"},
        {"the last end", "0,0 50,0 50,80 100,80", "100,80 120,60", "0,0", "0,0 50,0 50,60 120,60"},
        {"a corner that is reached goes", "0,0 50,0 50,80 100,80", "0,0 0,80", "100,80",
         "0,80 100,80"},
        {"an end that reaches its corner", "0,0 50,0 50,80", "0,0 50,0", "50,80", "50,0 50,80"},
        {"an oblique end", "0,0 30,40 90,40", "0,0 5,5", "90,40", "5,5 30,40 90,40"},
        {"onto the other end", "0,0 100,0", "0,0 100,0", "100,0", "100,0 100.1,0.1"},
        // Others hang on it.
        {"a branch holds the run", "0,0 50,0 50,80; 20,0 20,-40", "0,0 0,10", "50,80 20,-40",
         "0,10 0,0 50,0 50,80; 20,0 20,-40"},
        {"past a branch", "0,0 100,0; 50,0 50,40", "0,0 70,0", "100,0 50,40",
         "70,0 50,0 100,0; 50,0 50,40"},
        {"past a branch, across", "0,0 100,0; 50,0 50,40", "0,0 70,-20", "100,0 50,40",
         "70,-20 50,-20 50,0 100,0; 50,0 50,40"},
        {"a branch on the second run", "0,0 50,0 50,80 100,80; 50,40 90,40", "0,0 0,60",
         "100,80 90,40", "0,60 0,0 50,0 50,80 100,80; 50,40 90,40"},
        {"a branch's own terminal", "0,0 100,0; 50,0 50,40", "50,40 70,60", "0,0 100,0",
         "0,0 100,0; 50,0 50,60 70,60"},
        // What is held by others at the terminal.
        {"off another terminal", "0,0 0.1,0.1", "0,0 40,20", "0,0", "40,20 40,0 0,0"},
        {"off a wire that goes through", "0,0 100,0; 50,0 50.1,0.1", "50,0 60,30", "0,0 100,0",
         "0,0 100,0; 60,30 50,30 50,0"},
        {"along that wire", "0,0 100,0; 50,0 50.1,0.1", "50,0 70,0", "0,0 100,0",
         "0,0 100,0; 70,0 70.1,0.1"},
        {"off two wires that end there", "0,0 50,0; 50,0 100,0", "50,0 50,30", "0,0 100,0",
         "0,0 50,0; 50,0 100,0; 50,30 50,0"},
        {"nothing drawn there", "0,0 100,0", "50,50 60,60", "0,0 100,0", "0,0 100,0"},
        // Branches that go along.
        {"all of it", "0,0 100,0; 50,0 50,40", "0,0 5,5 100,0 105,5 50,40 55,45", "",
         "5,5 105,5; 55,5 55,45"},
        {"a whole branch, and what hangs on it", "0,0 100,0; 50,0 50,40", "0,0 10,10 100,0 110,10",
         "50,40", "10,10 110,10; 60,10 50,10 50,40"},
        {"both ends, each by its own way", "0,0 100,0", "0,0 0,10 100,0 100,-10", "",
         "0,10 0,-10 100,-10"},
    };
    for (const auto& row : rows) {
        QVector<WireStretch::Shift> shifts;
        const QVector<QPointF> moves = pointsOf(QString::fromLatin1(row.moves));
        for (int i = 0; i + 1 < moves.size(); i += 2) {
            shifts.append({moves.at(i), moves.at(i + 1)});
        }
        const QPainterPath result =
            WireStretch::stretched(pathOf(QString::fromLatin1(row.path)), shifts,
                                   pointsOf(QString::fromLatin1(row.fixed)));
        EXPECT_EQ(textOf(result).toStdString(), row.result) << row.name;
    }
}

TEST(NetJunctions, LieWhereThreeBranchesMeet) {
    const struct {
        const char* path;
        const char* terminals;
        const char* junctions;
    } rows[] = {{"0,0 50,0 50,80", "0,0 50,80", ""},                 // a corner
                {"0,0 100,0; 50,0 50,40", "", "50,0"},               // a branch
                {"0,0 100,0; 50,-40 50,40", "", "50,0"},             // one net that crosses itself
                {"0,0 50,0; 90,0 50,0; 50,9 50,0", "", "50,0"},      // three ends
                {"0,0 50,0; 0,20 0,0 50,0", "", ""},                 // one upon the other
                {"0,0 50,0; 50,0 90,0", "50,0", "50,0"},             // a terminal between
                {"0,0 50,0; 20,0 20.1,0.1", "20,0", "20,0"},         // a terminal dropped on a wire
                {"0,0 0.1,0.1", "0,0 0,0", ""},                      // two terminals alone
                {"0,0 100,0; 50,0 50,40; 50,0 90,40", "", "50,0"}};  // once each
    for (const auto& row : rows) {
        QPainterPath found;
        for (const QPointF& point :
             NetJunctions::junctions(pathOf(QString::fromLatin1(row.path)),
                                     pointsOf(QString::fromLatin1(row.terminals)))) {
            found.isEmpty() && found.elementCount() == 0 ? found.moveTo(point)
                                                         : found.lineTo(point);
        }
        EXPECT_EQ(textOf(found).toStdString(), row.junctions) << row.path;
    }
}
