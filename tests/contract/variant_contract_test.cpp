// BSTR, VARIANT, and typed dates.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/contract/contract.h"

namespace {

TEST(Variant, TextsAndClear) {
    EXPECT_EQ(nullptr, SysAllocString(nullptr));
    EXPECT_EQ(0u, SysStringLen(nullptr));
    SysFreeString(nullptr);
    VARIANT value = Poison<VARIANT>();
    VariantInit(&value);
    EXPECT_EQ(VT_EMPTY, value.vt);
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(TEXT("text"));
    EXPECT_EQ(4u, SysStringLen(value.bstrVal));
    EXPECT_EQ(S_OK, VariantClear(&value));
    EXPECT_EQ(VT_EMPTY, value.vt);
}

struct DateRow {
    const char* label;
    LPCWSTR text;
    double date;
    eGap gap = eGap::none;
};

HRESULT Convert(LPCWSTR text, VARIANT& result) {
    VARIANT source;
    VariantInit(&source);
    source.vt = VT_BSTR;
    source.bstrVal = text == nullptr ? nullptr : SysAllocString(text);
    const HRESULT status = VariantChangeType(&result, &source, 0, VT_DATE);
    VariantClear(&source);
    return status;
}

TEST(TypedDate, Accepted) {
    constexpr double kDay = 45358;  // 2024-03-07
    const DateRow rows[] = {
        {"dashes", TEXT("2024-03-07"), kDay},
        {"short date", TEXT("3/7/2024"), kDay},
        {"two-digit year last", TEXT("3/7/24"), kDay},
        {"year 49", TEXT("49 3 7"), 54489},
        {"year 50", TEXT("50 3 7"), 18329},
        {"year 100", TEXT("100 1 1"), -657434},
        {"year 9999", TEXT("9999 12 31"), 2958465},
        {"day 0", TEXT("1899 12 30"), 0},
        {"no month 13: day and month swap", TEXT("2024 13 7"), 45486},
        {"day, month, two-digit year", TEXT("31 12 99"), 36525},
        {"time behind", TEXT("2024 3 7 12:30"), kDay + 0.520833333333},
        {"afternoon", TEXT("3/7/2024 2:05 PM"), kDay + 0.586805555556},
        {"month by name", TEXT("March 7, 2024"), kDay, eGap::native},
        {"month and year", TEXT("2024 3"), 45352, eGap::native},
    };
    for (const DateRow& row : rows) {
        SCOPED_TRACE(row.label);
        VARIANT result;
        VariantInit(&result);
        const HRESULT status = Convert(row.text, result);
        KNOWN_GAP(row.gap, status == S_OK && result.vt == VT_DATE &&
                               std::fabs(result.date - row.date) < 1e-9)
            << std::hex << status << ' ' << result.date;
    }
}

TEST(TypedDate, RefusedLeavesTheResult) {
    const DateRow rows[] = {
        {"null", nullptr, 0},
        {"empty", TEXT(""), 0},
        {"four numbers", TEXT("2024 1 2 3"), 0},
        {"30 February", TEXT("2024 2 30"), 0},
        {"29 February of no leap year", TEXT("2023 2 29"), 0},
        {"year 10000", TEXT("10000 1 1"), 0},
        {"hour 24", TEXT("3/7/2024 24:00"), 0},
        {"second 60", TEXT("2024 3 7 1:2:60"), 0},
        {"fraction of a second", TEXT("2024 3 7 12:30:45.5"), 0},
    };
    for (const DateRow& row : rows) {
        SCOPED_TRACE(row.label);
        VARIANT result;
        VariantInit(&result);
        result.vt = VT_I4;
        result.lVal = 7;
        EXPECT_EQ(DISP_E_TYPEMISMATCH, Convert(row.text, result));
        EXPECT_EQ(VT_I4, result.vt);
        EXPECT_EQ(7, result.lVal);
    }
}

TEST(TypedDate, ReplacesItsSource) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(TEXT("2024 3 7"));
    EXPECT_EQ(S_OK, VariantChangeType(&value, &value, 0, VT_DATE));
    EXPECT_EQ(VT_DATE, value.vt);
    EXPECT_EQ(45358, value.date);
}

}  // namespace
