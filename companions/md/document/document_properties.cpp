#include "companions/md/document/document_properties.h"

namespace mddoc {

namespace {

const WCHAR* StreamName(eSetKind kind) {
    switch (kind) {
        case eSetKind::Summary:
            return kSummaryStream;
        case eSetKind::DocumentSummary:
        case eSetKind::UserDefined:
            return kDocumentSummaryStream;
        case eSetKind::Product:
            return kProductStream;
    }
    return kSummaryStream;
}

// Whether a stream's section holds the set. The first section of the two summaries is theirs
// under any format id: writers got the id wrong more often than the contents.
bool IsSectionOf(eSetKind kind, std::size_t index, const GUID& format) {
    switch (kind) {
        case eSetKind::Summary:
            return index == 0;
        case eSetKind::DocumentSummary:
            return index == 0 && !(format == kUserDefinedFormat);
        case eSetKind::UserDefined:
            return format == kUserDefinedFormat;
        case eSetKind::Product:
            return format == kProductFormat;
    }
    return false;
}

}  // namespace

HRESULT DocumentProperties::Open(const DocumentPath& path, bool isPlainFile) {
    Close();
    status_ = file_.Open(path, isPlainFile);
    if (status_ == STG_E_FILEALREADYEXISTS) status_ = S_FALSE;
    return status_;
}

void DocumentProperties::Close() {
    file_.Close();
    for (StreamState& state : streams_)
        state.isLoaded = false;
    for (SetState& state : sets_) {
        if (state.isLoaded) state.section.Reset();
        state.isLoaded = false;
    }
    status_ = S_FALSE;
}

DocumentProperties::StreamState& DocumentProperties::StreamOf(eSetKind kind) {
    switch (kind) {
        case eSetKind::Summary:
            return streams_[0];
        case eSetKind::DocumentSummary:
        case eSetKind::UserDefined:
            return streams_[1];
        case eSetKind::Product:
            return streams_[2];
    }
    return streams_[0];
}

HRESULT DocumentProperties::LoadStream(StreamState& state, WTextView name) {
    if (state.isLoaded) return state.status;
    CompoundFile::Stream stream;
    state.status = file_.FindStream(name, stream);
    if (state.status == S_OK) state.status = state.stream.Open(file_, stream);
    state.isLoaded = true;
    return state.status;
}

HRESULT DocumentProperties::LoadSet(eSetKind kind, SetState& state) {
    StreamState& holder = StreamOf(kind);
    const HRESULT status = LoadStream(holder, StreamName(kind));
    if (status != S_OK) return status;
    const auto& sections = holder.stream.Sections();
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (!IsSectionOf(kind, i, sections[i].format)) continue;
        return state.section.Load(holder.stream.Window(), decoder_, sections[i].offset);
    }
    return S_FALSE;
}

HRESULT DocumentProperties::SetStatus(eSetKind kind) {
    if (status_ != S_OK) return status_;
    SetState& state = sets_[static_cast<std::size_t>(kind)];
    if (!state.isLoaded) {
        state.status = LoadSet(kind, state);
        // What a damaged set seems to hold must not be found.
        if (FAILED(state.status)) state.section.Reset();
        state.isLoaded = true;
    }
    return state.status;
}

HRESULT DocumentProperties::ReadSlot(eSetKind kind, const PropertySection::Slot& slot,
                                     PropertyValue& value) {
    const PropertySection& section = sets_[static_cast<std::size_t>(kind)].section;
    ValueReader reader = section.Reader(StreamOf(kind).stream.Window(), decoder_);
    const HRESULT status = reader.Read(slot.offset, value);
    if (FAILED(status)) value.Clear();
    return status;
}

HRESULT DocumentProperties::Find(eSetKind kind, DWORD id, PropertyValue& value) {
    value.Clear();
    const HRESULT status = SetStatus(kind);
    if (status != S_OK) return status;
    const auto* slot = sets_[static_cast<std::size_t>(kind)].section.Find(id);
    return slot == nullptr ? S_FALSE : ReadSlot(kind, *slot, value);
}

HRESULT DocumentProperties::FindByName(WTextView name, PropertyValue& value) {
    value.Clear();
    const HRESULT status = SetStatus(eSetKind::UserDefined);
    if (status != S_OK) return status;
    PropertySection& section = sets_[static_cast<std::size_t>(eSetKind::UserDefined)].section;
    const PropertySection::Slot* slot = section.FindName(name);
    return slot == nullptr ? S_FALSE : ReadSlot(eSetKind::UserDefined, *slot, value);
}

HRESULT DocumentProperties::FindBlob(eSetKind kind, DWORD id, std::uint32_t cbMost,
                                     std::vector<BYTE>& bytes) {
    bytes.clear();
    const HRESULT status = SetStatus(kind);
    if (status != S_OK) return status;
    const PropertySection& section = sets_[static_cast<std::size_t>(kind)].section;
    const auto* slot = section.Find(id);
    if (slot == nullptr) return S_FALSE;
    ValueReader reader = section.Reader(StreamOf(kind).stream.Window(), decoder_);
    return reader.ReadBlob(slot->offset, cbMost, bytes);
}

HRESULT DocumentProperties::List(eSetKind kind, std::vector<PropertyEntry>& entries) {
    entries.clear();
    const HRESULT status = SetStatus(kind);
    if (status != S_OK) return status;
    const PropertySection& section = sets_[static_cast<std::size_t>(kind)].section;
    for (const PropertySection::Slot& slot : section.Slots()) {
        PropertyEntry& entry = entries.emplace_back();
        entry.id = slot.id;
        entry.name = section.NameOf(slot);
        entry.status = ReadSlot(kind, slot, entry.value);
    }
    return S_OK;
}

HRESULT DocumentProperties::OpenStream(WTextView name, StreamWindow& stream) {
    if (status_ != S_OK) return status_;
    CompoundFile::Stream place;
    const HRESULT status = file_.FindStream(name, place);
    if (status == S_OK) stream.Attach(file_, place);
    return status;
}

}  // namespace mddoc
