#include "BenchResults.h"

#include <algorithm>
#include <limits>
#include <unistd.h>

namespace {

std::string rowOf(const benchmark::BenchmarkReporter::Run& run)
{
    const std::string& arguments = run.run_name.args;
    return run.run_name.function_name + (arguments.empty() ? "" : "/" + arguments);
}

std::string keyOf(const std::string& row, const std::string& figure)
{
    return row + ' ' + figure;
}

} // namespace

BenchResults::BenchResults()
    : benchmark::ConsoleReporter(isatty(STDOUT_FILENO) == 1 ? OO_ColorTabular : OO_Tabular)
{
}

void BenchResults::ReportRuns(const std::vector<Run>& runs)
{
    benchmark::ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        // Where only the aggregates are reported the median stands for the repetitions.
        if (run.run_type == Run::RT_Iteration || run.aggregate_name == "median") {
            note(run);
        }
    }
}

void BenchResults::note(const Run& run)
{
    const std::string row = rowOf(run);
    const double time = run.GetAdjustedRealTime();
    if (time > 0.0) { // a row that was skipped has none
        m_values[keyOf(row, "time")].push_back(time);
    }
    for (const auto& [name, counter] : run.counters) {
        m_values[keyOf(row, name)].push_back(counter.value);
    }
}

double BenchResults::value(const std::string& row, const std::string& figure) const
{
    const auto found = m_values.find(keyOf(row, figure));
    if (found == m_values.end()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    std::vector<double> values = found->second;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
