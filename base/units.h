// The conversions between the units of paper sizes: 1/360 inch in data files and margins, 0.1 mm
// in the public record and towards callers, 0.01 inch where a user enters inches. Integer
// division; 64-bit arithmetic, so that no value from a record can overflow.
#ifndef KV_BASE_UNITS_H
#define KV_BASE_UNITS_H

#include <cstdint>

constexpr int64_t From360ToMM(int64_t v)
{
    return (v * 254 + 180) / 360;
}
constexpr int64_t FromMMTo360(int64_t v)
{
    return (v * 360 + 127) / 254;
}
constexpr int64_t FromInchToMM(int64_t v)
{
    return (v * 254 + 50) / 100;
}
constexpr int64_t FromInchTo360(int64_t v)
{
    return (v * 360 + 50) / 100;
}
constexpr int64_t FromMMToInch(int64_t v)
{
    return (v * 100 + 127) / 254;
}

constexpr uint32_t UNIT_MM = 1;   // 0.1 mm
constexpr uint32_t UNIT_INCH = 2; // 0.01 inch; any unit but UNIT_MM converts as inches

#endif
