#include "BenchMain.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

bool isMet(const Aim& aim)
{
    return aim.bound == Aim::Bound::AtMost ? aim.value <= aim.limit : aim.value >= aim.limit;
}

/** As a row of a Markdown table, so that it can be pasted as it is. */
std::string rowFor(const Aim& aim)
{
    std::array<char, 200> text{};
    std::snprintf(text.data(), text.size(), "| %-72s | %8.3g | %s %5g | %-3s |", aim.what.c_str(),
                  aim.value, aim.bound == Aim::Bound::AtMost ? "at most " : "at least", aim.limit,
                  isMet(aim) ? "yes" : "no");
    return text.data();
}

std::vector<std::string> rowsFor(const std::vector<Aim>& aims)
{
    std::vector<std::string> rows;
    for (const Aim& aim : aims) {
        if (!std::isnan(aim.value)) {
            rows.push_back(rowFor(aim));
        }
    }
    return rows;
}

void print(const std::vector<std::string>& rows)
{
    if (rows.empty()) {
        return;
    }
    std::printf("\n| %-72s | %8s | %-14s | met |\n", "", "measured", "aim");
    for (const std::string& row : rows) {
        std::puts(row.c_str());
    }
}

void keep(const std::vector<std::string>& rows)
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing changes the environment
    const char* const path = std::getenv("KD_BENCH_AIMS");
    if (!path) {
        return;
    }
    std::ofstream file(path, std::ios::app);
    for (const std::string& row : rows) {
        file << row << '\n';
    }
}

} // namespace

int runBenchmarks(int argc, char** argv, const Aims& aims)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    BenchResults results;
    benchmark::RunSpecifiedBenchmarks(&results);
    const std::vector<std::string> rows = rowsFor(aims(results));
    print(rows);
    keep(rows);
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
