// What the functions that judge texts answer, as one line each to compare.
#pragma once

#include <string>

namespace tarnwick::testing {

/// A field: its kind, and the value by each column format that reads it.
std::string FieldVerdict(const std::string& field);
/// A number with its unit: taken apart; or a unit alone: whether it is known, and its base.
std::string UnitVerdict(const std::string& text);
/// A line above a table: what its fields may be.
std::string LineVerdict(const std::string& line);
/// A line of names: how it is cut for one to six columns.
std::string CutVerdict(const std::string& line);
/// A column's name: how it reads as that of errors.
std::string ErrorVerdict(const std::string& name);
/// A column's name: what it says of an argument or a time.
std::string NameVerdict(const std::string& name);
/// A line: what is left of it without frame, remark or comment mark.
std::string FrameVerdict(const std::string& line);
/// "Year Month: 2024 | 3": the time that they make.
std::string TimeVerdict(const std::string& parts);
/// "upper / lower": the names they give together for one to six columns.
std::string StackVerdict(const std::string& lines);

}  // namespace tarnwick::testing
