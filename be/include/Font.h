#pragma once

#include <InterfaceDefs.h>
#include <Rect.h>
#include <SupportDefs.h>

class BString;

typedef char font_family[64];
typedef char font_style[64];

enum {
    B_FONT_FAMILY_AND_STYLE = 0x00000001,
    B_FONT_SIZE = 0x00000002,
    B_FONT_SHEAR = 0x00000004,
    B_FONT_ROTATION = 0x00000008,
    B_FONT_SPACING = 0x00000010,
    B_FONT_ENCODING = 0x00000020,
    B_FONT_FACE = 0x00000040,
    B_FONT_FLAGS = 0x00000080,
    B_FONT_FALSE_BOLD_WIDTH = 0x00000100,
    B_FONT_ALL = 0x000001FF
};

enum {
    B_ITALIC_FACE = 0x0001,
    B_UNDERSCORE_FACE = 0x0002,
    B_NEGATIVE_FACE = 0x0004,
    B_OUTLINED_FACE = 0x0008,
    B_STRIKEOUT_FACE = 0x0010,
    B_BOLD_FACE = 0x0020,
    B_REGULAR_FACE = 0x0040,
    B_CONDENSED_FACE = 0x0080,
    B_LIGHT_FACE = 0x0100,
    B_HEAVY_FACE = 0x0200
};

enum { B_CHAR_SPACING = 0, B_STRING_SPACING, B_BITMAP_SPACING, B_FIXED_SPACING };

enum { B_UNICODE_UTF8 = 0 };

enum { B_HAS_TUNED_FONT = 0x0001, B_IS_FIXED = 0x0002, B_PRIVATE_FONT_FLAG = 0x0004 };

enum { B_TRUNCATE_END = 0, B_TRUNCATE_BEGINNING = 1, B_TRUNCATE_MIDDLE = 2, B_TRUNCATE_SMART = 3 };

// Pixels; descent is positive.
struct font_height {
    float ascent;
    float descent;
    float leading;
};

struct escapement_delta {
    float nonspace;
    float space;
};

// A font: family, style and size in pixels. A small value to copy; widths come from tables that
// live as long as the process. Any thread. A fresh BFont is a copy of be_plain_font.
class BFont {
public:
    BFont();
    BFont(const BFont& font);
    explicit BFont(const BFont* font);
    BFont& operator=(const BFont& font);
    bool operator==(const BFont& font) const;
    bool operator!=(const BFont& font) const;

    // B_BAD_VALUE if there is no such family or style; the font stays as it was. A null style takes
    // the family's regular one, a null family keeps the present one.
    status_t SetFamilyAndStyle(const font_family family, const font_style style);
    void SetFamilyAndStyle(uint32 code);
    status_t SetFamilyAndFace(const font_family family, uint16 face);
    void SetSize(float size);
    void SetFace(uint16 face);
    void SetSpacing(uint8 spacing);
    void SetFlags(uint32 flags);

    void GetFamilyAndStyle(font_family* family, font_style* style) const;
    uint32 FamilyAndStyle() const;
    float Size() const;
    uint16 Face() const;
    uint8 Spacing() const;
    uint32 Flags() const;
    bool IsFixed() const;

    // Widths of UTF-8 text; length counts bytes. Broken bytes count as the replacement character.
    float StringWidth(const char* string) const;
    float StringWidth(const char* string, int32 length) const;
    void GetStringWidths(const char* const stringArray[], const int32 lengthArray[],
                         int32 numStrings, float widthArray[]) const;
    // One entry a character, in units of the font's size.
    void GetEscapements(const char charArray[], int32 numChars, float escapementArray[]) const;
    void GetHeight(font_height* height) const;

    // Cuts the text to at most width pixels, with an ellipsis where it was cut.
    void TruncateString(BString* inOut, uint32 mode, float width) const;

private:
    uint32 fFamilyAndStyle; // family index << 16 | style index
    float fSize;
    uint16 fFace; // faces asked for besides what the style has
    uint8 fSpacing;
    uint32 fFlags;
};

// The desktop's interface font, its bold, and its fixed-width font. Valid from the BApplication's
// construction on; until then they are of a built-in family.
extern const BFont* be_plain_font;
extern const BFont* be_bold_font;
extern const BFont* be_fixed_font;

// Any thread. Families are sorted by name; an index out of range gives B_ERROR.
int32 count_font_families();
status_t get_font_family(int32 index, font_family* name, uint32* flags = nullptr);
int32 count_font_styles(font_family name);
status_t get_font_style(font_family family, int32 index, font_style* name, uint32* flags = nullptr);
status_t get_font_style(font_family family, int32 index, font_style* name, uint16* face,
                        uint32* flags = nullptr);
bool update_font_families(bool checkOnly);
