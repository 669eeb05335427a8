#pragma once

#include <GraphicsDefs.h>
#include <Rect.h>
#include <SupportDefs.h>

#include <memory>

class BView;

// Pixels in the program's memory, drawn with BView::DrawBitmap. Color spaces: B_RGBA32, B_RGB32,
// B_CMAP8 (the system palette; 255 is transparent), B_GRAY8 and B_GRAY1. Any thread, one at a time;
// the destructor may run as soon as a drawing call that took it has returned.
class BBitmap {
public:
    class Private;

    BBitmap(BRect bounds, color_space colorSpace, bool acceptsViews = false,
            bool needsContiguous = false);
    BBitmap(const BBitmap* source, bool acceptsViews = false, bool needsContiguous = false);
    explicit BBitmap(const BBitmap& source);
    virtual ~BBitmap();

    // B_BAD_VALUE for a bad rectangle or an unknown color space, B_NO_MEMORY for one too large.
    status_t InitCheck() const;
    bool IsValid() const;

    void* Bits() const;
    int32 BitsLength() const;
    int32 BytesPerRow() const;
    color_space ColorSpace() const;
    BRect Bounds() const;

    // Rows of data without padding beyond what the color space states; length and offset in bytes
    // of data. A 24-bit or 32-bit bitmap takes B_RGB24 (r, g, b), B_RGB32 and B_CMAP8; others take
    // their own.
    void SetBits(const void* data, int32 length, int32 offset, color_space colorSpace);
    status_t ImportBits(const void* data, int32 length, int32 bytesPerRow, int32 offset,
                        color_space colorSpace);
    status_t ImportBits(const BBitmap* bitmap);

private:
    BBitmap& operator=(const BBitmap&) = delete;

    std::unique_ptr<Private> fPrivate;
};
