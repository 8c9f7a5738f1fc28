#pragma once

#include <limits>
#include <string_view>
#include <utility>

/// The members of the JSON form beside the fields.
namespace Spreadsheets {

constexpr std::string_view formatMember = "format";
constexpr std::string_view formatName = "kvfound-foundations";
constexpr std::string_view versionMember = "version";
constexpr int formatVersion = 1;
constexpr std::string_view unitsMember = "units";
constexpr std::string_view forceMember = "force";
constexpr std::string_view lengthMember = "length";
constexpr std::string_view foundationsMember = "foundations";
constexpr std::string_view maximumMember = "maximum";

/// What is no number in JSON stands as text.
constexpr std::pair<std::string_view, double> numberWords[] = {
    {"inf", std::numeric_limits<double>::infinity()},
    {"-inf", -std::numeric_limits<double>::infinity()},
    {"nan", std::numeric_limits<double>::quiet_NaN()}};

}  // namespace Spreadsheets
