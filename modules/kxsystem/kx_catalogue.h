// Reads gettext catalogues (.po). Internal to kxsystem, and free of Windows so that it can be tested anywhere.
#pragma once

#include <kxsystem/kx_plural.h>

#include <cstddef>
#include <functional>
#include <memory>
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

    // One line in UTF-8 that is in another charset, named in small letters. Nothing when it is not in that charset, or
    // the charset is not known.
    using Convert = std::function<std::optional<std::string>(const std::string& charset, std::string_view line)>;

    // Reads the text of a .po file whole, or refuses it with a remark. Taken are UTF-8 with or without a byte order
    // mark, ASCII under whatever name, what `convert` can convert of the charset that the header names, lines ending in
    // LF or CRLF, and the escapes \n \t \r \a \b \f \v \\ \". Octal and hexadecimal escapes are refused: UTF-8 makes
    // them needless. Passed over are entries that are fuzzy, untranslated or obsolete (#~), and plural ones that have
    // not as many forms as the header's rule; a rule that cannot be read counts as none, and has no forms. Of two
    // entries for one (context, text) the first that is not passed over holds; the others go into `duplicates`.
    static std::optional<CKxCatalogue> Read(std::string_view po, CKxCatalogueRemark& refusal,
                                            std::vector<CKxCatalogueRemark>& duplicates, const Convert& convert = {});

    // The translation, or null.
    const std::wstring* Find(std::wstring_view context, std::wstring_view text) const;
    // That of a text which has forms, for a number; or null.
    const std::wstring* Find(std::wstring_view context, std::wstring_view text, unsigned long long number) const;

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
    template <class Value>
    using MapOf = std::unordered_map<Key, Value, Hash, Equal>;
    // The rule is that of the catalogue from which the forms are.
    struct Forms {
        std::shared_ptr<const CKxPluralRule> rule;
        std::vector<std::wstring> forms;
    };

public:
    const MapOf<std::wstring>& Entries() const noexcept { return m_entries; }

private:
    MapOf<std::wstring> m_entries;
    MapOf<Forms> m_plurals;
};
