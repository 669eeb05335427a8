#pragma once

#include <SupportDefs.h>

// The one codec between the servers' Shift_JIS (Microsoft code page 932) and the program's UTF-8.
// It knows the Basic Multilingual Plane and sequences of at most three bytes, keeps no state and
// may be used from any thread. Lengths are byte counts.

// Converts *srcLen bytes of cp932. *srcLen comes back as the count consumed, *dstLen as the count
// written; dst needs room for three times the source and is not terminated. Returns 0, or −1 when a
// byte that starts no character was written as "?". A double-byte code without a character becomes
// one byte of 0x00 and is no error. Nothing is read beyond the source: a lead byte at its end is
// taken with a trail of 0x00.
int32 cp932_conv_to_utf8(const char* src, int32* srcLen, char* dst, int32* dstLen);

// The reverse; the output is never longer than the input. Returns 0, or −1 when a character that
// cp932 lacks was written as "?". A byte that starts no sequence of up to three bytes ends the
// conversion early: *srcLen is then less than was given.
int32 utf8_conv_to_cp932(const char* src, int32* srcLen, char* dst, int32* dstLen);

// Decodes the sequence at src into *code and returns its length, 1 to 3; 0 with *code = 0 when its
// first byte starts none. Continuation bytes are not checked; a terminating 0x00 ends the reading.
int32 set_unicode(const char* src, uint16* code);

// The length of the sequence that a byte starts: 1 to 3, or 0.
int32 get_utf8_bytes_from_utf8(uint8 c);

// Writes a code point as UTF-8, one to three bytes, unterminated; returns the count.
int32 put_utf8_from_unicode(uint16 code, char* dst);
