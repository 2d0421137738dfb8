// The property sets of one stream: its sections, and of each the list of its properties, the code
// page and the names. What a section claims is checked when it is loaded; values are decoded when
// they are asked for.
#pragma once

#include <cstdint>
#include <vector>

#include "companions/md/document/property_value.h"

namespace mddoc {

inline constexpr std::uint32_t kDictionaryId = 0;
inline constexpr std::uint32_t kCodePageId = 1;

// A set beyond one of these counts as damaged.
inline constexpr std::uint32_t kMostSetBytes = 8u << 20;
inline constexpr std::uint32_t kMostProperties = 65536;

// One section. Belongs to the window that it was loaded from.
class PropertySection {
public:
    struct Slot {
        std::uint32_t id;
        std::uint32_t offset;  // in the stream
        std::uint32_t name;    // its first in the list of names, or kNoName
    };

    // S_OK or a failure, which is then the status of every value in here.
    [[nodiscard]] HRESULT Load(StreamWindow& window, TextDecoder& decoder, std::uint32_t offset);
    void Reset();

    // In the order of the section, the dictionary left out.
    const std::vector<Slot>& Slots() const { return slots_; }
    const Slot* Find(std::uint32_t id) const;
    // Empty where the dictionary has none.
    WTextView NameOf(const Slot& slot) const;
    // The property under a name, without case, or null. Of several the first in the dictionary.
    const Slot* FindName(WTextView name);

    // A reader that is set up for the values of this section.
    ValueReader Reader(StreamWindow& window, TextDecoder& decoder) const;

private:
    static constexpr std::uint32_t kNoName = 0xFFFFFFFF;
    // Of a property that is there. The table may name others, too.
    struct Name {
        std::uint32_t slot;
        std::uint32_t begin;  // in the text of all names
        std::uint32_t cch;
    };

    WTextView TextOf(const Name& name) const {
        return WTextView(texts_).substr(name.begin, name.cch);
    }
    HRESULT ReadSlots(StreamWindow& window, std::uint32_t offset, std::uint32_t count);
    HRESULT ReadCodePage(ValueReader& reader);
    HRESULT CheckValues(ValueReader& reader) const;
    HRESULT ReadNames(StreamWindow& window, TextDecoder& decoder, std::uint32_t offset);
    HRESULT AddName(StreamWindow& window, std::uint32_t id, WTextView text);

    std::uint32_t begin_ = 0;
    std::uint32_t end_ = 0;
    std::uint32_t codePage_ = 0;
    std::uint32_t dictionary_ = 0;  // its offset, 0 for none
    std::vector<Slot> slots_;
    std::vector<std::uint32_t> byId_;  // the slots in the order of their ids
    std::vector<Name> names_;
    std::vector<std::uint32_t> byText_;  // the names in the order of their texts, once needed
    WText texts_;
};

// The head of a property set stream.
class PropertySetStream {
public:
    struct Section {
        GUID format;
        std::uint32_t offset;
    };

    // S_OK; STG_E_DOCFILECORRUPT when the stream has no sound head or is too long.
    [[nodiscard]] HRESULT Open(CompoundFile& file, const CompoundFile::Stream& stream);
    const std::vector<Section>& Sections() const { return sections_; }
    StreamWindow& Window() { return window_; }

private:
    StreamWindow window_;
    std::vector<Section> sections_;
};

}  // namespace mddoc
