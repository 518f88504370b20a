#pragma once

#include <string>
#include <string_view>

/// Lines and columns of element files.
namespace pelorin::orbit {

/// Two digits of 0 … 99.
std::string TwoDigit(int number);

/// Three digits of 0 … 999.
std::string ThreeDigit(int number);

/// Turns every blank into "0".
void ZeroFill(std::string& text);

/// Blanks and control characters cut off at both ends.
std::string_view Trimmed(std::string_view text);

/// ASCII letters in upper case; all other bytes stay.
std::string UpperCased(std::string_view text);

/// Takes the next line off the text, without its end (CR LF or LF); false, and an empty line, at the end.
bool TakeLine(std::string_view& text, std::string_view& line);

/// The signed integer in `length` columns from `firstColumn` (1-based) on, blanks read as zeros.
/// Columns beyond the line's end are missing; anything unreadable is 0.
int IntegerField(std::string_view line, int firstColumn, int length);

/// The same for a decimal number.
double RealField(std::string_view line, int firstColumn, int length);

}  // namespace pelorin::orbit
