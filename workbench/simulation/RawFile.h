#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <complex>

/// What one analysis answered: a table whose first column is what was swept.
struct RawPlot {
    QString name;
    bool isComplex = false;
    /// Fewer points are there than the file says.
    bool isCut = false;
    /// In lower case: "time", "v(out)".
    QStringList vectors;
    /// By vector, all of one length.
    QVector<QVector<double>> real;
    /// The same for complex plots; else empty.
    QVector<QVector<double>> imaginary;

    int points() const { return real.isEmpty() ? 0 : real.first().size(); }
    /// -1 for an unknown vector.
    int indexOf(const QString& vector) const { return vectors.indexOf(vector.toLower()); }
};

/// The plots of a raw file of the simulator, text or binary in this machine's byte order. A plot
/// that breaks off holds the points that are whole. Empty, with the reason, if there is none.
QVector<RawPlot> readRawFile(const QByteArray& bytes, QString* reason);

/// One plot as such a file, binary.
QByteArray writeRawFile(const RawPlot& plot, const QString& title);
