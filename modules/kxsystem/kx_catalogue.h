// Reads gettext catalogues (.po). Internal to kxsystem, and free of Windows so that it can be tested anywhere.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// A place in the text of a catalogue, lines counted from 1, and what is to be said about it.
struct CKxCatalogueRemark {
    int line = 0;
    const char* reason = "";
};

class CKxCatalogue {
public:
    // Larger texts are refused.
    static constexpr std::size_t MaxSize = std::size_t{16} * 1024 * 1024;

    // Reads the text of a .po file whole, or refuses it with a remark. Taken are UTF-8 with or without a byte order
    // mark, lines ending in LF or CRLF, and the escapes \n \t \r \a \b \f \v \\ \". Octal and hexadecimal escapes are
    // refused: UTF-8 makes them needless. Passed over are entries that are fuzzy, untranslated, obsolete (#~) or
    // plural. Of two entries for one (context, text) the first that is not passed over holds; the others go into
    // `duplicates`.
    static std::optional<CKxCatalogue> Read(std::string_view po, CKxCatalogueRemark& refusal,
                                            std::vector<CKxCatalogueRemark>& duplicates);

    // The translation, or null.
    const std::wstring* Find(std::wstring_view context, std::wstring_view text) const;

    // Adds the entries of another catalogue that are not in this one. Changes nothing if memory runs out.
    void AddMissing(CKxCatalogue&& other);

    struct KeyView {
        std::wstring_view context, text;
        friend bool operator==(const KeyView&, const KeyView&) = default;
    };
    struct Key {
        std::wstring context, text;
        operator KeyView() const noexcept { return {context, text}; }
    };

private:
    friend class CKxCatalogueReader;

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const KeyView& key) const noexcept {
            const std::hash<std::wstring_view> hash;
            return hash(key.context) * 31 + hash(key.text);
        }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(const KeyView& a, const KeyView& b) const noexcept { return a == b; }
    };
    using Map = std::unordered_map<Key, std::wstring, Hash, Equal>;

public:
    const Map& Entries() const noexcept { return m_entries; }

private:
    Map m_entries;
};
