#pragma once

#include "dialogs/TechData.h"
#include "platform/SyncInfo.h"
#include "tests/support/MemoryQuotes.h"
#include "tests/support/MemoryServices.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>

namespace ta::test {

/// Numbers as the terminal writes them: k decimals of 10 + k and 20 + k. Fractions: code 5 has
/// 32nds, any other has none.
class PlainNumberDisplay : public MemoryNumberDisplay {
public:
    CString CApi_DisplayDouble(double value, int code) const override {
        return fmt::format("{:.{}f}", value, code == 31 || code == 41 ? 1 : std::max(code, 0) % 10);
    }
    CString CApi_DisplayDenominator(double value, unsigned char code) const override {
        return code == 5 ? fmt::format("{}/32", std::lround(value * 32)) : "N/A";
    }
};

/// The numbers, the quotes and the settings that technical data are shown by.
class TechDataServices {
public:
    TechDataServices() {
        quotes.language = {{"IDC_TECHVIEW-STRING_TECHDATA_DEAL_VOL", "volume"},
                           {"IDC_TECHVIEW-STRING_TECHDATA_DEAL_AMT", "amount"},
                           {"IDC_TECHVIEW-STRING_TECHDATA_OI_VOL", "interest"}};
        services.numberDisplay = &display;
        services.messageBoxTitle = "Terminal";
        HangIn();
        BKQuoteInterface::SetBKInterface(&quotes);
    }
    ~TechDataServices() {
        BKQuoteInterface::SetBKInterface(nullptr);
        CSyncInfo::GetSettingCFG().SetServices({});
    }
    void HangIn() { CSyncInfo::GetSettingCFG().SetServices(services); }

    PlainNumberDisplay display;
    MemoryQuotes quotes;
    Services services;
};

/// The date's column and columns of two decimals in a market without a unit rule.
inline techdata::Headers MakeHeaders(const std::vector<CString>& names) {
    techdata::Headers headers;
    for (const CString& name : names) {
        headers.push_back({name, 0, 0, 2});
    }
    return headers;
}

/// Day 19787 (2024-03-05) and the days behind it, each with its row's number in every column.
inline techdata::Records MakeRecords(std::size_t count, std::size_t values) {
    techdata::Records records;
    for (std::size_t row = 0; row < count; ++row) {
        const auto number = static_cast<double>(row);
        records.push_back({19787 + number, std::vector<double>(values, number)});
    }
    return records;
}

}  // namespace ta::test
