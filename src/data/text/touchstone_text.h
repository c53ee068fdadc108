// Parameters of networks of several ports over frequency, whose records go over lines, turned into a line for each frequency.
// Knows the first version of the format (Touchstone 1.1 of the IBIS Open Forum: files .s1p to .sNp); knows no columns.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

/// The text below the line of options ("# GHz S MA R 50") with a line for each record, values between tabs, below a remark that
/// names them: "! freq [GHz]", "|S11|", "arg S11 [deg]" for MA, "S11 [dB]" for DB, "Re S11", "Im S11" for RI. Remarks stay, what
/// stands behind values and blank lines go. Nothing when the text is in no such format, or some record has not the frequency and
/// two numbers for each pair of as many ports as the first.
std::optional<std::string> LinesOfTouchstone(std::string_view text);

}  // namespace tarnwick
