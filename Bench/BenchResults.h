#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/** Prints the rows of a benchmark as a table, and keeps their figures for what is said of them in
 * the end. */
class BenchResults : public benchmark::ConsoleReporter
{
public:
    BenchResults();

    void ReportRuns(const std::vector<Run>& runs) override;

    /**
     * @param row the benchmark's name with its arguments, without what Google Benchmark adds
     * @param figure the name of a counter, or "time" for the row's time in its unit
     * @return the median over the repetitions; NaN when it was not measured.
     */
    double value(const std::string& row, const std::string& figure) const;

    /** The same for two rows, or two figures, as a ratio. */
    double ratio(const std::string& row, const std::string& otherRow,
                 const std::string& figure) const
    {
        return value(row, figure) / value(otherRow, figure);
    }

private:
    void note(const Run& run);

    std::map<std::string, std::vector<double>> m_values;
};
