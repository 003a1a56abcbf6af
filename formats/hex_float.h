#pragma once

/// The value of a hexadecimal digit, either case, into \a out. False, with 0 in \a out, for any
/// other character.
bool hexasciitoint(char& out, char c);

/// Eight hexadecimal digits as a single-precision float: four bytes, the least significant first
/// ("0000803F" is 1.0). Reads up to the first character that is no digit; then false, with \a out
/// unchanged, so a terminated string may be shorter.
bool hexasciitofloat(float& out, const char* text);
