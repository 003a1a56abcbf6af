#pragma once

/// Stores the value of a hexadecimal digit, in either case, in \a out. False, with 0 in \a out, for
/// any other character.
bool hexasciitoint(char& out, char c);

/// Parses eight hexadecimal digits as a single-precision float: four bytes, the least significant
/// first ("0000803F" is 1.0). Stops at the first character that is not a digit; then returns false,
/// with \a out unchanged, so a shorter terminated string is safe.
bool hexasciitofloat(float& out, const char* text);
