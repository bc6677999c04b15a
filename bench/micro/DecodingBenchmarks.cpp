// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Allocations.h"
#include "decoding/UtilPrinterStatus.h"
#include "FloorCheck.h"
#include "Floors.h"
#include "SampleReplies.h"
#include "StatusWorker.h"
#include "WalkedReply.h"

#include <array>

namespace {

// The position of an object on the stack changes these times by a tenth.
constexpr std::size_t CacheLineBytes = 64;

unsigned char* Bytes(QByteArray& reply)
{
    return reinterpret_cast<unsigned char*>(reply.data());
}

unsigned long Length(const QByteArray& reply)
{
    return static_cast<unsigned long>(reply.size());
}

using Decoder = unsigned int (UtilPrinterStatus::*)(unsigned char*, unsigned long);

void Decode(benchmark::State& state, QByteArray reply, Decoder decoder)
{
    const AllocationNote note(state);
    for (auto _ : state) {
        alignas(CacheLineBytes) auto status = UtilPrinterStatus(); // as the evaluation does
        benchmark::DoNotOptimize((status.*decoder)(Bytes(reply), Length(reply)));
        benchmark::DoNotOptimize(&status);
        benchmark::ClobberMemory();
    }
}

using Walker = bool (*)(Walk&, const unsigned char*, unsigned long);

void WalkReply(benchmark::State& state, QByteArray reply, Walker walker)
{
    alignas(CacheLineBytes) Walk walk;
    const AllocationNote note(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(walker(walk, Bytes(reply), Length(reply)));
        benchmark::DoNotOptimize(&walk);
        benchmark::ClobberMemory();
    }
}

using ZeroVectorsWalker = bool (*)(WalkZeroVectors&, const unsigned char*, unsigned long);

void WalkReplyZeroVectors(benchmark::State& state, QByteArray reply, ZeroVectorsWalker walker)
{
    const AllocationNote note(state);
    for (auto _ : state) {
        alignas(CacheLineBytes) WalkZeroVectors walk;
        benchmark::DoNotOptimize(walker(walk, Bytes(reply), Length(reply)));
        benchmark::DoNotOptimize(&walk);
        benchmark::ClobberMemory();
    }
}

using Evaluation = int (TrdGetPrinterStatus::*)(unsigned char*, unsigned long);

void Evaluate(benchmark::State& state, QByteArray reply, Evaluation evaluation)
{
    StatusWorker worker;
    const AllocationNote note(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize((worker.*evaluation)(Bytes(reply), Length(reply)));
        benchmark::ClobberMemory();
    }
}

// Codes from the whole range of the table, and an unknown one.
constexpr std::array<unsigned long, 8> c_codes{{0x0100, 0x1106, 0x110D, 0x11B4, 0x1218, 0x2103, 0x4213, 0x7777}};

template <typename Mapping> void MapCodes(benchmark::State& state, const Mapping& mapping)
{
    const AllocationNote note(state);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(mapping(c_codes[i++ % c_codes.size()]));
    }
}

template <typename Comparison> void Compare(benchmark::State& state, const Comparison& differ)
{
    const stPrinterState a = FullReplyState();
    stPrinterState b = FullReplyState(); // equal, but without shared data
    const AllocationNote note(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(differ(a, b));
        benchmark::ClobberMemory();
    }
}

void MapErrorCode(benchmark::State& state)
{
    MapCodes(state, GetErrorStatusEnum);
}

void ReadConditionTable(benchmark::State& state)
{
    const ConditionTable table;
    MapCodes(state, [&table](unsigned long code) { return table.condition(code); });
}

void CheckChange(benchmark::State& state)
{
    StatusWorker worker;
    Compare(state,
            [&worker](const stPrinterState& a, const stPrinterState& b) { return worker.CheckStatusChange(a, b); });
}

void CompareInPlace(benchmark::State& state)
{
    Compare(state, DiffersInPlace);
}

BENCHMARK_CAPTURE(Decode, standard, StandardSample(), &UtilPrinterStatus::parseRecvBuf)->Name("standard decoder");
BENCHMARK_CAPTURE(WalkReply, standard, StandardSample(), WalkStandardReply)->Name("standard walk");
BENCHMARK_CAPTURE(WalkReplyZeroVectors, standard, StandardSample(), WalkStandardReply)
    ->Name("standard walk + zero + vectors");
BENCHMARK_CAPTURE(Evaluate, standard, StandardSample(), &TrdGetPrinterStatus::CheckPrinterStatus)
    ->Name("standard evaluation");
BENCHMARK_CAPTURE(Decode, qz, QZSample(), &UtilPrinterStatus::parseRecvBuf_QZ)->Name("QZ decoder");
BENCHMARK_CAPTURE(WalkReply, qz, QZSample(), WalkQZReply)->Name("QZ walk");
BENCHMARK_CAPTURE(WalkReplyZeroVectors, qz, QZSample(), WalkQZReply)->Name("QZ walk + zero + vectors");
BENCHMARK_CAPTURE(Evaluate, qz, QZSample(), &TrdGetPrinterStatus::CheckPrinterStatus_QZ)->Name("QZ evaluation");
BENCHMARK(MapErrorCode)->Name("error code mapping");
BENCHMARK(ReadConditionTable)->Name("condition table");
BENCHMARK(CheckChange)->Name("CheckStatusChange");
BENCHMARK(CompareInPlace)->Name("compare in place");

} // namespace
