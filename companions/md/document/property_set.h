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

// One section. Belongs to the window that it was loaded from.
class PropertySection {
public:
    struct Slot {
        std::uint32_t id;
        std::uint32_t offset;  // in the stream
    };
    struct Name {
        std::uint32_t id;
        WText text;
    };

    // S_OK or a failure, which is then the status of every value in here.
    [[nodiscard]] HRESULT Load(StreamWindow& window, TextDecoder& decoder, std::uint32_t offset);
    void Reset();

    // In the order of the section, the dictionary left out.
    const std::vector<Slot>& Slots() const { return slots_; }
    const std::vector<Name>& Names() const { return names_; }
    const Slot* Find(std::uint32_t id) const;
    const WText* NameOf(std::uint32_t id) const;
    // The id of a property under a name, without case; false where there is none.
    bool FindName(WTextView name, std::uint32_t& id) const;

    // A reader that is set up for the values of this section.
    ValueReader Reader(StreamWindow& window, TextDecoder& decoder) const;

private:
    HRESULT ReadSlots(StreamWindow& window, std::uint32_t offset, std::uint32_t count);
    HRESULT ReadCodePage(ValueReader& reader);
    HRESULT CheckValues(ValueReader& reader) const;
    HRESULT ReadNames(StreamWindow& window, TextDecoder& decoder, std::uint32_t offset);

    std::uint32_t begin_ = 0;
    std::uint32_t end_ = 0;
    std::uint32_t codePage_ = 0;
    std::uint32_t dictionary_ = 0;  // its offset, 0 for none
    std::vector<Slot> slots_;
    std::vector<Name> names_;
    std::vector<std::uint32_t> sorted_;
};

// The head of a property set stream.
class PropertySetStream {
public:
    struct Section {
        GUID format;
        std::uint32_t offset;
    };

    // S_OK; STG_E_DOCFILECORRUPT when the stream has no sound head.
    [[nodiscard]] HRESULT Open(CompoundFile& file, const CompoundFile::Stream& stream);
    const std::vector<Section>& Sections() const { return sections_; }
    StreamWindow& Window() { return window_; }

private:
    StreamWindow window_;
    std::vector<Section> sections_;
};

}  // namespace mddoc
