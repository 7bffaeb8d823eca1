// Collation by ICU, with a shortcut for ASCII text.
#include "library/collation.h"

#include <unicode/ucol.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <string>
#include <vector>

namespace {

// Returns the locale's name for ICU; "" is the root locale.
std::string CollationLocale() {
    for (const char* const variable : {"LC_ALL", "LC_COLLATE", "LANG"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            const std::string locale(value);
            const std::string name = locale.substr(0, locale.find_first_of(".@"));
            return name == "C" || name == "POSIX" ? std::string() : name;
        }
    }
    return {};
}

const char16_t* Units(QStringView text) {
    return text.utf16();
}

// Whether ICU's table for the locale differs from the root's.
bool IsTailored(const UCollator* collator) {
    std::int32_t length = 0;
    ucol_getRules(collator, &length);
    UErrorCode error = U_ZERO_ERROR;
    return length > 0 || ucol_getAttribute(collator, UCOL_ALTERNATE_HANDLING, &error) != UCOL_NON_IGNORABLE;
}

} // namespace

Collation::Collation() {
    UErrorCode error = U_ZERO_ERROR;
    collator_ = ucol_open(CollationLocale().c_str(), &error);
    if (U_FAILURE(error)) {
        // Without ICU's data, texts are compared by the codes of their characters.
        collator_ = nullptr;
        return;
    }
    ucol_setStrength(collator_, UCOL_SECONDARY);
    FindWeights();
}

Collation::~Collation() {
    if (collator_ != nullptr) {
        ucol_close(collator_);
    }
}

int Collation::Compare(QStringView a, QStringView b) const {
    if (collator_ == nullptr) {
        return a.compare(b, Qt::CaseInsensitive);
    }
    return ucol_strcoll(collator_, Units(a), static_cast<std::int32_t>(a.size()), Units(b),
                        static_cast<std::int32_t>(b.size()));
}

// In the root's order an ASCII character has one weight or none, no two of them contract, and no two differ
// only in accents. Comparing character by character therefore gives the order of whole texts.
void Collation::FindWeights() {
    if (IsTailored(collator_)) {
        return;
    }
    const auto compare = [&](char16_t a, char16_t b) { return ucol_strcoll(collator_, &a, 1, &b, 1); };
    std::vector<char16_t> characters(weights_.size());
    std::iota(characters.begin(), characters.end(), u'\0');
    std::stable_sort(characters.begin(), characters.end(),
                     [&](char16_t a, char16_t b) { return compare(a, b) < 0; });
    const char16_t nothing = 0;
    std::uint8_t weight = 0;
    char16_t last = 0;
    for (const char16_t c : characters) {
        const bool ignored = ucol_strcoll(collator_, &c, 1, &nothing, 0) == 0;
        if (!ignored && (weight == 0 || compare(last, c) != 0)) {
            ++weight;
        }
        weights_[c] = ignored ? 0 : weight;
        last = c;
    }
    hasWeights_ = true;
}
