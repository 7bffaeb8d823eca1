// Matching names with wildcards.
#include "library/file_pattern.h"

#include <QStringList>

#include <algorithm>

namespace {

char16_t Folded(QChar c) {
    const char16_t code = c.unicode();
    if (code < 0x80) {
        return code >= u'A' && code <= u'Z' ? static_cast<char16_t>(code | 0x20) : code;
    }
    return c.toCaseFolded().unicode();
}

bool Same(QChar pattern, QChar c) {
    return pattern == u'?' || Folded(pattern) == Folded(c);
}

bool EndsWith(QStringView name, QStringView ending) {
    return name.size() >= ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), name.rbegin(),
                      [](QChar a, QChar b) { return Folded(a) == Folded(b); });
}

// Greedy matching: on a mismatch the last "*" takes one more character. The time is at most proportional to
// the product of both lengths.
bool MatchesWildcard(QStringView name, QStringView pattern) {
    qsizetype at = 0;
    qsizetype in = 0;
    qsizetype star = -1;
    qsizetype retry = 0;
    while (at < name.size()) {
        if (in < pattern.size() && pattern[in] == u'*') {
            star = in++;
            retry = at;
        } else if (in < pattern.size() && Same(pattern[in], name[at])) {
            ++in;
            ++at;
        } else if (star >= 0) {
            in = star + 1;
            at = ++retry;
        } else {
            return false;
        }
    }
    return std::all_of(pattern.begin() + in, pattern.end(), [](QChar c) { return c == u'*'; });
}

} // namespace

FilePattern::FilePattern(const QString& pattern) {
    for (const QString& text : pattern.split(u';', Qt::SkipEmptyParts)) {
        const bool all = text == QStringLiteral("*.*");
        const QString wildcard = all ? QStringLiteral("*") : text;
        const QString ending = wildcard.mid(1);
        const bool isEnding = wildcard.startsWith(u'*') && !ending.contains(u'*') && !ending.contains(u'?');
        wildcards_.push_back({isEnding ? ending : wildcard, isEnding});
    }
}

bool FilePattern::Matches(QStringView name) const {
    const auto matches = [&](const Wildcard& wildcard) {
        return wildcard.isEnding ? EndsWith(name, wildcard.text) : MatchesWildcard(name, wildcard.text);
    };
    return wildcards_.empty() || std::any_of(wildcards_.begin(), wildcards_.end(), matches);
}
