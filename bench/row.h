// A row of the table that kv_bench measures and prints.
#ifndef KV_BENCH_ROW_H
#define KV_BENCH_ROW_H

#include <functional>
#include <string>

struct Row {
    std::string name;
    std::function<void()> act;
    std::string measure; // the row whose time is 1; empty: nanoseconds
    double limit;
    long mostCalls;       // system calls, -1: any
    long mostAllocations; // -1: any; what is made is always freed again
    // The seconds that count, when they are only a part of what is done. Null: all of act.
    std::function<double()> seconds = nullptr;
};

#endif
