#include "Ratios.h"

#include <algorithm>
#include <cstdio>

std::vector<Ratios::Row>& Ratios::rows() {
    static std::vector<Row> rows;
    return rows;
}

void Ratios::require(const std::string& row, const std::string& ours, const std::string& limit,
                     double most) {
    rows().push_back({row, ours, limit, 0, 0, most});
}

void Ratios::requireWithin(const std::string& row, const std::string& ours, double milliseconds) {
    rows().push_back({row, ours, {}, 0, milliseconds});
}

void Ratios::note(const std::string& row, double value, double most, const std::string& unit) {
    const auto known = std::find_if(rows().begin(), rows().end(),
                                    [&row](const Row& other) { return other.name == row; });
    if (known != rows().end()) {
        known->value = value;
    } else {
        rows().push_back({row, {}, {}, value, most, 1, unit});
    }
}

void Ratios::Reporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.error_occurred || run.run_type != Run::RT_Iteration) {
            continue;
        }
        const bool setsTime = !run.run_name.time_type.empty();
        const double seconds = setsTime ? run.real_accumulated_time : run.cpu_accumulated_time;
        const double milliseconds =
            seconds * 1000 /
            static_cast<double>(std::max<benchmark::IterationCount>(run.iterations, 1));
        const std::string arguments = run.run_name.args.empty() ? "" : "/" + run.run_name.args;
        const auto entry =
            shortest.emplace(run.run_name.function_name + arguments, milliseconds).first;
        entry->second = std::min(entry->second, milliseconds);
    }
    ConsoleReporter::ReportRuns(runs);
}

bool Ratios::fill(const Reporter& reporter, Row* row) {
    const auto take = [&reporter](const std::string& name, double* value) {
        const auto found = reporter.shortest.find(name);
        if (found != reporter.shortest.end()) {
            *value = found->second;
        }
        return name.empty() || found != reporter.shortest.end();
    };
    return take(row->ours, &row->value) && take(row->limit, &row->limitValue);
}

void Ratios::print(const Reporter& reporter) {
    std::printf("\n%-52s %10s %10s      %7s %7s\n", "Row", "ours", "limit", "ratio", "at most");
    for (Row row : rows()) {
        if (!fill(reporter, &row)) {
            continue;
        }
        const double ratio = row.value / row.limitValue;
        std::printf("%-52s %10.4g %10.4g %-4s %7.2f %7.2f  %s\n", row.name.c_str(), row.value,
                    row.limitValue, row.unit.c_str(), ratio, row.most,
                    ratio <= row.most ? "pass" : "falls short");
    }
}

int Ratios::run(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    print(reporter);
    return 0;
}
