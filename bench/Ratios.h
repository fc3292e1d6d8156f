#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// What a program has measured, each beside its own limit, as a table. Rows name the benchmarks
/// that they compare, such as "load/10000", and are given before the benchmarks run.
class Ratios {
public:
    /// `ours` must take at most `most` times as long as `limit`, both measured in this run.
    static void require(const std::string& row, const std::string& ours, const std::string& limit,
                        double most);
    /// `ours` must end within that time.
    static void requireWithin(const std::string& row, const std::string& ours, double milliseconds);
    /// For what is no time; may be called while benchmarks run. The value in `unit`, and the most
    /// that it may be. A row that is given again shows the last value.
    static void note(const std::string& row, double value, double most, const std::string& unit);

    /// Runs the benchmarks that the command line asks for, and prints the table of those rows whose
    /// benchmarks ran. The program's exit status: 0 also where a row falls short.
    static int run(int argc, char** argv);

private:
    struct Row {
        std::string name;
        // Names of benchmarks; empty where the value is given.
        std::string ours;
        std::string limit;
        double value = 0;
        double limitValue = 0;
        double most = 1;
        std::string unit = "ms";
    };

    /// Prints like the one it derives from, and notes the shortest time of each benchmark in
    /// milliseconds: CPU time, or the time that the benchmark has set itself.
    class Reporter : public benchmark::ConsoleReporter {
    public:
        void ReportRuns(const std::vector<Run>& runs) override;

        std::map<std::string, double> shortest;
    };

    static std::vector<Row>& rows();
    /// False if a benchmark of the row has not run.
    static bool fill(const Reporter& reporter, Row* row);
    static void print(const Reporter& reporter);
};
