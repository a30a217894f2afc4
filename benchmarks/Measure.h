// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

/// The time that the work takes, seconds.
template <typename Work>
double seconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Times of a piece of work and of the reference that it is compared with, measured in turn so
/// that what else the machine does hits both. Says the medians: "work_ms", "reference_ms", and
/// "ratio" of the first to the second. The time of an iteration is that of both.
class Comparison
{
public:
    explicit Comparison(benchmark::State &state) : m_state(state) {}

    ~Comparison()
    {
        m_state.counters["work_ms"] = median(m_work) * 1000.0;
        m_state.counters["reference_ms"] = median(m_reference) * 1000.0;
        m_state.counters["ratio"] = median(m_work) / median(m_reference);
    }

    Comparison(const Comparison &) = delete;
    Comparison &operator=(const Comparison &) = delete;

    /// One turn of both. What they leave is cleared behind each of them, so that the second starts
    /// with the same heap as the first; that counts as nobody's time.
    template <typename Work, typename Reference, typename Clear>
    void measure(Work work, Reference reference, Clear clear)
    {
        m_work.push_back(seconds(work));
        clear();
        mergeFreedMemory();
        m_reference.push_back(seconds(reference));
        clear();
        mergeFreedMemory();
        m_state.SetIterationTime(m_work.back() + m_reference.back());
    }

    /// The same for what leaves nothing.
    template <typename Work, typename Reference>
    void measure(Work work, Reference reference)
    {
        measure(work, reference, [] {});
    }

private:
    /// The allocator puts off merging small pieces until somebody wants a large one. Otherwise each
    /// side would pay for what the other has freed.
    static void mergeFreedMemory() { QByteArray(64 * 1024, Qt::Uninitialized); }

    benchmark::State &m_state;
    std::vector<double> m_work;
    std::vector<double> m_reference;
};

/// Adds a benchmark whose iterations give their own times. A slow one is given a number of
/// iterations, for the median to mean something; 0 means as many as half a second has room for.
template <typename Function>
void addBenchmark(const QString &name, int iterations, Function function)
{
    auto *const added = benchmark::RegisterBenchmark(name.toUtf8().constData(), std::move(function))
                                ->UseManualTime()
                                ->Unit(benchmark::kMillisecond);
    if (iterations > 0)
        added->Iterations(iterations);
}

/// Runs the benchmarks that add() adds and the command line picks.
inline int runBenchmarks(int argc, char **argv, void (*add)())
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    add();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
