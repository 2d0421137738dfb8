#include "companions/blx/natural_order.h"

namespace {

bool IsDigit(WCHAR unit) {
    return unit >= '0' && unit <= '9';
}

// Takes the run of digits from the front of `text`, without its leading zeros. Values of any length
// compare so: the longer run is the greater.
WTextView TakeNumber(WTextView& text) {
    std::size_t end = 0;
    while (end < text.size() && IsDigit(text[end]))
        ++end;
    WTextView digits = text.substr(0, end);
    text.remove_prefix(end);
    while (!digits.empty() && digits.front() == '0')
        digits.remove_prefix(1);
    return digits;
}

int CompareNatural(WTextView a, WTextView b) {
    while (!a.empty() && !b.empty()) {
        if (IsDigit(a.front()) && IsDigit(b.front())) {
            const WTextView numberA = TakeNumber(a);
            const WTextView numberB = TakeNumber(b);
            if (numberA.size() != numberB.size()) return numberA.size() < numberB.size() ? -1 : 1;
            if (const int order = numberA.compare(numberB)) return order;
            continue;
        }
        const WCHAR unitA = wtext::FoldAscii(a.front());
        const WCHAR unitB = wtext::FoldAscii(b.front());
        if (unitA != unitB) return unitA < unitB ? -1 : 1;
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return a.empty() ? (b.empty() ? 0 : -1) : 1;
}

}  // namespace

bool NaturalLess(const WText& a, const WText& b) {
    const int order = CompareNatural(a, b);
    return order != 0 ? order < 0 : a < b;
}
