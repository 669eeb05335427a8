#include <Font.h>

#include <QFontDatabase>
#include <QStringList>

#include <algorithm>
#include <cstring>
#include <mutex>

namespace {

struct Families {
    std::mutex lock;
    bool read = false;
    QStringList names; // guarded by lock
};

Families sFamilies;

QString FamilyAt(int32 index) {
    std::lock_guard lock(sFamilies.lock);
    return sFamilies.names.value(index);
}

void ReadOnce() {
    std::lock_guard lock(sFamilies.lock);
    if (sFamilies.read)
        return;
    sFamilies.read = true;
    for (const QString& name : QFontDatabase::families()) {
        if (!QFontDatabase::isPrivateFamily(name) &&
            name.toUtf8().size() < qsizetype(sizeof(font_family)))
            sFamilies.names += name;
    }
    sFamilies.names.sort(Qt::CaseInsensitive);
}

status_t CopyOut(const QString& name, char* to) {
    const QByteArray bytes = name.toUtf8();
    if (bytes.isEmpty() || bytes.size() >= static_cast<qsizetype>(sizeof(font_family)))
        return B_ERROR;
    memcpy(to, bytes.constData(), static_cast<size_t>(bytes.size()) + 1);
    return B_OK;
}

uint16 FaceOf(const QFont& font) {
    uint16 face = 0;
    if (font.bold())
        face |= B_BOLD_FACE;
    if (font.italic())
        face |= B_ITALIC_FACE;
    if (font.weight() < QFont::Normal)
        face |= B_LIGHT_FACE;
    return face != 0 ? face : static_cast<uint16>(B_REGULAR_FACE);
}

} // namespace

int32 count_font_families() {
    ReadOnce();
    std::lock_guard lock(sFamilies.lock);
    return static_cast<int32>(sFamilies.names.size());
}

status_t get_font_family(int32 index, font_family* name, uint32* flags) {
    ReadOnce();
    const QString family = FamilyAt(index);
    if (family.isEmpty() || name == nullptr)
        return B_ERROR;
    if (flags != nullptr)
        *flags = QFontDatabase::isFixedPitch(family) ? B_IS_FIXED : 0;
    return CopyOut(family, *name);
}

int32 count_font_styles(font_family name) {
    return static_cast<int32>(QFontDatabase::styles(QString::fromUtf8(name)).size());
}

status_t get_font_style(font_family family, int32 index, font_style* name, uint32* flags) {
    return get_font_style(family, index, name, nullptr, flags);
}

status_t get_font_style(font_family family, int32 index, font_style* name, uint16* face,
                        uint32* flags) {
    const QString familyName = QString::fromUtf8(family);
    const QString style = QFontDatabase::styles(familyName).value(index);
    if (style.isEmpty() || name == nullptr)
        return B_ERROR;
    if (face != nullptr)
        *face = FaceOf(QFontDatabase::font(familyName, style, 10));
    if (flags != nullptr)
        *flags = QFontDatabase::isFixedPitch(familyName, style) ? B_IS_FIXED : 0;
    return CopyOut(style, *name);
}

bool update_font_families(bool) {
    return false;
}
