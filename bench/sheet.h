// The sheet of the larger sample, opened by a person who does nothing but look.
#ifndef KV_BENCH_SHEET_H
#define KV_BENCH_SHEET_H

#include <string>
#include <vector>

#include "bench/row.h"
#include "tests/support/driver.h"

// Rows in multiples of the row named.
std::vector<Row> SheetRows(const LoadedDriver &driver, HANDLE hPrinter, const std::string &floor);
// What openings of the sheet, with a look at every page, leave behind. Prints a line for each kind;
// whether nothing grew.
bool OpeningsLeaveNothing(const LoadedDriver &driver, HANDLE hPrinter, int openings);

#endif
