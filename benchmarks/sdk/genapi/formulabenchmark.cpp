// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "allocations.h"

#include "genapi/internal/formula.h"

#include <benchmark/benchmark.h>

using GenApi::Internal::CFormula;
using GenApi::Internal::EFormulaKind;
using GenApi::Internal::SFormulaValue;

namespace
{

constexpr const char* kFormula = "WIDTH * HEIGHT * ((PIXELFORMAT>>16)&0xFF) / 8";

void CompileFormula(benchmark::State& state)
{
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(CFormula::Parse(kFormula, EFormulaKind::Integer));
    }
}
BENCHMARK(CompileFormula);

void EvaluateFormula(benchmark::State& state)
{
    const CFormula formula = CFormula::Parse(kFormula, EFormulaKind::Integer);
    const SFormulaValue values[] = {SFormulaValue::FromInteger(2048), SFormulaValue::FromInteger(1088),
                                    SFormulaValue::FromInteger(0x01080001)};
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(formula.EvaluateInteger(values, 3));
    }
}
BENCHMARK(EvaluateFormula);

} // namespace
