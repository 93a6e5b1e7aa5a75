#include "controls/color_text.h"

#include <cstdio>
#include <initializer_list>

namespace tessellum {
namespace {

// How far a text goes toward one form: off it, a beginning that more typing could
// finish, or the whole form.
enum class Scan { kInvalid, kIncomplete, kComplete };

int DigitValue(char c, bool hex) {
    if (c >= '0' && c <= '9') return c - '0';
    if (!hex) return -1;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Reads one form of the text from its start. A form ends where the text does; a step
// that finds the end before the form is whole gives kIncomplete.
class Reader {
public:
    explicit Reader(const char* text) : at(text) {}

    bool AtEnd() const { return *at == '\0'; }
    void SkipBlanks() {
        while (IsBlank(*at)) ++at;
    }
    const char* Position() const { return at; }
    bool Take(char sign) {
        if (*at != sign) return false;
        ++at;
        return true;
    }
    bool TakeLetter(char lower) {  // in either case
        if (*at != lower && *at != lower - ('a' - 'A')) return false;
        ++at;
        return true;
    }
    // Up to `most` digits of the base; `count` of them read. `limit` bounds the value.
    int32_t Digits(bool hex, int most, int32_t limit, int* count) {
        int32_t value = 0;
        *count = 0;
        for (int digit = DigitValue(*at, hex); digit >= 0; digit = DigitValue(*at, hex)) {
            if (++*count > most) return -1;
            value = value * (hex ? 16 : 10) + digit;
            if (value > limit) return -1;
            ++at;
        }
        return value;
    }

private:
    const char* at;
};

// Three decimals apart by commas, closed by a bracket when `bracketed`, then nothing.
Scan ScanDecimals(Reader& reader, bool bracketed, uint8_t values[3]) {
    for (int channel = 0; channel < 3; ++channel) {
        reader.SkipBlanks();
        if (reader.AtEnd()) return Scan::kIncomplete;
        int count = 0;
        const int32_t value = reader.Digits(false, 3, 255, &count);
        if (value < 0 || count == 0) return Scan::kInvalid;
        values[channel] = static_cast<uint8_t>(value);
        reader.SkipBlanks();
        if (channel == 2) break;
        if (reader.AtEnd()) return Scan::kIncomplete;
        if (!reader.Take(',')) return Scan::kInvalid;
    }
    if (bracketed) {
        if (reader.AtEnd()) return Scan::kIncomplete;
        if (!reader.Take(')')) return Scan::kInvalid;
        reader.SkipBlanks();
    }
    return reader.AtEnd() ? Scan::kComplete : Scan::kInvalid;
}

Scan ScanFunction(const char* text, uint8_t values[3]) {
    Reader reader(text);
    reader.SkipBlanks();
    for (char letter : {'r', 'g', 'b'}) {
        if (reader.AtEnd()) return Scan::kIncomplete;
        if (!reader.TakeLetter(letter)) return Scan::kInvalid;
    }
    reader.SkipBlanks();
    if (reader.AtEnd()) return Scan::kIncomplete;
    if (!reader.Take('(')) return Scan::kInvalid;
    return ScanDecimals(reader, true, values);
}

Scan ScanList(const char* text, uint8_t values[3]) {
    Reader reader(text);
    return ScanDecimals(reader, false, values);
}

// Six hexadecimal digits, or with the sign also three, each standing for itself twice.
Scan ScanHex(const char* text, bool withSign, uint8_t values[3]) {
    Reader reader(text);
    reader.SkipBlanks();
    if (withSign) {
        if (reader.AtEnd()) return Scan::kIncomplete;
        if (!reader.Take('#')) return Scan::kInvalid;
    }
    const char* digits = reader.Position();
    int count = 0;
    if (reader.Digits(true, 6, 0xFFFFFF, &count) < 0) return Scan::kInvalid;
    const bool whole = count == 6 || (withSign && count == 3);
    if (reader.AtEnd()) {
        if (!whole) return Scan::kIncomplete;
    } else {
        reader.SkipBlanks();  // blanks may close the form, nothing else may follow it
        if (!whole || !reader.AtEnd()) return Scan::kInvalid;
    }
    const int width = count / 3;  // digits per channel
    for (int channel = 0; channel < 3; ++channel) {
        int32_t value = 0;
        for (int i = 0; i < width; ++i)
            value = value * 16 + DigitValue(digits[channel * width + i], true);
        values[channel] = static_cast<uint8_t>(width == 1 ? value * 17 : value);
    }
    return Scan::kComplete;
}

// The furthest any form goes; a text is whole in one form at most.
Scan ScanColor(const char* text, Rgb8* color) {
    uint8_t values[3] = {};
    Scan best = Scan::kInvalid;
    for (int form = 0; form < 4 && best != Scan::kComplete; ++form) {
        const Scan scan = form == 0   ? ScanHex(text, true, values)
                          : form == 1 ? ScanHex(text, false, values)
                          : form == 2 ? ScanFunction(text, values)
                                      : ScanList(text, values);
        if (scan > best) best = scan;
    }
    if (best == Scan::kComplete && color != nullptr) *color = {values[0], values[1], values[2]};
    return best;
}

}  // namespace

bool ParseChannelText(const char* text, bool hex, uint8_t* value) {
    Reader reader(text);
    int count = 0;
    const int32_t read = reader.Digits(hex, hex ? 2 : 3, 255, &count);
    if (read < 0 || count == 0 || !reader.AtEnd()) return false;
    *value = static_cast<uint8_t>(read);
    return true;
}

bool ChannelTextTypable(const char* text, bool hex) {
    uint8_t value = 0;
    return *text == '\0' || ParseChannelText(text, hex, &value);
}

bool ParseColorText(const char* text, Rgb8* color) {
    return ScanColor(text, color) == Scan::kComplete;
}

bool ColorTextTypable(const char* text) {
    return ScanColor(text, nullptr) != Scan::kInvalid;
}

void FormatChannelText(uint8_t value, bool hex, char* text) {
    std::snprintf(text, 4, hex ? "%02X" : "%d", value);
}

void FormatColorText(const Rgb8& color, char* text) {
    std::snprintf(text, 8, "#%02X%02X%02X", color.red, color.green, color.blue);
}

}  // namespace tessellum
