#include "RawFile.h"

#include <QCoreApplication>
#include <QList>

#include <cstring>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Simulation", text);
}

class Reader {
public:
    explicit Reader(const QByteArray& bytes) : m_bytes(bytes) {}

    /// False at the end and at anything that is no plot.
    bool read(RawPlot* plot) {
        int variables = 0;
        while (m_at < m_bytes.size()) {
            const QByteArray line = nextLine();
            const QByteArray key = line.left(line.indexOf(':')).trimmed().toLower();
            const QByteArray value = line.mid(line.indexOf(':') + 1).trimmed();
            if (key == "plotname") {
                plot->name = QString::fromUtf8(value);
            } else if (key == "flags") {
                plot->isComplex = value.contains("complex");
            } else if (key == "no. variables") {
                variables = value.toInt();
            } else if (key == "no. points") {
                m_points = value.toInt();
            } else if (key == "variables") {
                for (int i = 0; i < variables && m_at < m_bytes.size(); ++i) {
                    const QList<QByteArray> words = nextLine().simplified().split(' ');
                    QString name = QString::fromUtf8(words.value(1)).toLower();
                    // What a sweep runs through is answered as if it were a net: "v(v-sweep)".
                    if (i == 0 && name.endsWith(QLatin1String("-sweep)"))) {
                        name = name.mid(2).chopped(1);
                    }
                    plot->vectors.append(name);
                }
            } else if (key == "binary" || key == "values") {
                if (plot->vectors.isEmpty()) {
                    return false;
                }
                prepare(plot);
                key == "binary" ? readBinary(plot) : readText(plot);
                plot->isCut = plot->points() < m_points;
                return true;
            }
        }
        return false;
    }

private:
    QByteArray nextLine() {
        const int end = m_bytes.indexOf('\n', m_at);
        const QByteArray line = m_bytes.mid(m_at, end < 0 ? -1 : end - m_at);
        m_at = end < 0 ? m_bytes.size() : end + 1;
        return line;
    }

    static void prepare(RawPlot* plot) {
        plot->real.resize(plot->vectors.size());
        plot->imaginary.resize(plot->isComplex ? plot->vectors.size() : 0);
    }

    void readBinary(RawPlot* plot) {
        const int numbers = plot->vectors.size() * (plot->isComplex ? 2 : 1);
        const int size = numbers * static_cast<int>(sizeof(double));
        // What the head promises may not be there.
        const int points = qBound<int>(0, m_points, (m_bytes.size() - m_at) / size);
        for (int v = 0; v < plot->vectors.size(); ++v) {
            plot->real[v].resize(points);
            if (plot->isComplex) {
                plot->imaginary[v].resize(points);
            }
        }
        const char* from = m_bytes.constData() + m_at;
        const auto take = [&from] {
            double number;
            std::memcpy(&number, from, sizeof number);
            from += sizeof number;
            return number;
        };
        for (int p = 0; p < points; ++p) {
            for (int v = 0; v < plot->vectors.size(); ++v) {
                plot->real[v][p] = take();
                if (plot->isComplex) {
                    plot->imaginary[v][p] = take();
                }
            }
        }
        m_at += points * size;
    }

    void readText(RawPlot* plot) {
        for (int p = 0; p < m_points; ++p) {
            for (int v = 0; v < plot->vectors.size();) {
                if (m_at >= m_bytes.size()) {
                    dropBroken(plot, p);
                    return;
                }
                // The first line of a point begins with its number.
                const QByteArray line = nextLine().simplified();
                if (line.isEmpty()) {
                    continue;
                }
                const QList<QByteArray> parts = line.split(' ').last().split(',');
                bool ok = false;
                plot->real[v].append(parts.first().toDouble(&ok));
                if (plot->isComplex) {
                    plot->imaginary[v].append(parts.value(1).toDouble());
                }
                if (!ok) {
                    dropBroken(plot, p);
                    return;
                }
                ++v;
            }
        }
    }

    static void dropBroken(RawPlot* plot, int points) {
        for (auto* table : {&plot->real, &plot->imaginary}) {
            for (QVector<double>& column : *table) {
                column.resize(qMin<int>(points, column.size()));
            }
        }
    }

    const QByteArray& m_bytes;
    int m_at = 0;
    int m_points = 0;
};

}  // namespace

QVector<RawPlot> readRawFile(const QByteArray& bytes, QString* reason) {
    QVector<RawPlot> plots;
    Reader reader(bytes);
    for (RawPlot plot; reader.read(&plot); plot = {}) {
        if (plot.points() > 0) {
            plots.append(plot);
        }
    }
    if (plots.isEmpty()) {
        *reason = tr("The simulator answered no values.");
    }
    return plots;
}

QByteArray writeRawFile(const RawPlot& plot, const QString& title) {
    QByteArray bytes;
    bytes += "Title: " + title.simplified().toUtf8() + '\n';
    bytes += "Plotname: " + plot.name.toUtf8() + '\n';
    bytes += plot.isComplex ? "Flags: complex\n" : "Flags: real\n";
    bytes += "No. Variables: " + QByteArray::number(plot.vectors.size()) + '\n';
    bytes += "No. Points: " + QByteArray::number(plot.points()) + '\n';
    bytes += "Variables:\n";
    for (int v = 0; v < plot.vectors.size(); ++v) {
        const QString& name = plot.vectors.at(v);
        const char* kind = name.startsWith(QLatin1String("i("))   ? "current"
                           : name.startsWith(QLatin1String("v(")) ? "voltage"
                                                                  : "notype";
        bytes += '\t' + QByteArray::number(v) + '\t' + name.toUtf8() + '\t' +
                 (v == 0 && !name.contains(QLatin1Char('(')) ? name.toUtf8() : QByteArray(kind)) +
                 '\n';
    }
    bytes += "Binary:\n";
    for (int p = 0; p < plot.points(); ++p) {
        for (int v = 0; v < plot.vectors.size(); ++v) {
            const double pair[] = {plot.real.at(v).at(p),
                                   plot.isComplex ? plot.imaginary.at(v).at(p) : 0};
            bytes.append(reinterpret_cast<const char*>(pair),
                         static_cast<int>(sizeof(double)) * (plot.isComplex ? 2 : 1));
        }
    }
    return bytes;
}
