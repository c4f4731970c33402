#pragma once
// The codec every configuration attribute value goes through: XML escaping with an "=XX"
// byte encoding stacked on top, so that the stored string is plain ASCII whatever the
// value holds.

#include "host/Text.h"

// Escapes the value (XmlEscape), converts it to bytes in the system's ANSI code page
// (characters the code page lacks become its default character) and writes each byte:
// '=' as "=3D", a byte below 0x80 as that character, and a byte b from 0x80 up as the
// three-byte UTF-8 form of the sign-widened unit 0xFF00 + b in "=XX" groups, so 0xE9
// becomes "=EF=BF=A9". The widening is deliberate: DecodeConfigValue relies on it.
WString EncodeConfigValue(const WString& value);

// Undoes EncodeConfigValue on a value that GetAttribute has already unescaped once:
// unescapes again (XmlUnescape), then reads bytes: a character other than '=' is one byte
// (its low eight bits); "=XX" with XX below 0x7F is that byte; a lead group from 0xC0 to
// 0xFD starts a sequence of 2 to 6 groups as in UTF-8, which gives one byte: for three
// groups X, Y after the lead, ((X - 2) * 64 + Y) mod 256, otherwise the low eight bits of
// the UTF-8 value. Any other lead value is that byte as it stands. An '=' too near the end
// to hold its groups ends the decoding there and the rest is dropped; an '=' that is not
// followed by well-formed groups is an ordinary '=' byte. The bytes are converted back from
// the ANSI code page.
WString DecodeConfigValue(const WString& value);

// True when the codec gives the value back: every character has a form in the code page (0:
// the system's ANSI code page, the one EncodeConfigValue writes in). A character the code
// page lacks is stored as its default character.
bool ConfigValueFitsCodePage(const WString& value, unsigned codePage = 0);
