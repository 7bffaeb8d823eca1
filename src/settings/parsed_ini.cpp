// Parsing INI files and looking keys up in them.
#include "settings/parsed_ini.h"

#include <QHashFunctions>

#include <algorithm>
#include <array>
#include <utility>

namespace {

// Positions have 32 bits; bytes beyond this stay in the file, unread.
constexpr qsizetype kParsedBytes = 0x7FFFFFFF;
constexpr std::uint32_t kNoEquals = 0xFFFFFFFF;
// The length of a usual line, a guess for the first size of the tables.
constexpr std::size_t kUsualLine = 24;
constexpr std::size_t kUsualSection = 1024;

// The bytes that end a key: line ends and "=".
constexpr std::array<bool, 256> kEndsKey = [] {
    std::array<bool, 256> ends{};
    ends['\n'] = ends['\r'] = ends['='] = true;
    return ends;
}();

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

constexpr bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}

// Plain loop over all bytes: the compiler turns it into wide operations.
bool AllAscii(QByteArrayView bytes) {
    unsigned char all = 0;
    for (const char c : bytes) {
        all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
    }
    return all < 0x80;
}

QByteArray FirstLineEnd(QByteArrayView bytes) {
    const auto* const at = std::find_if(bytes.begin(), bytes.end(), IsLineEnd);
    if (at == bytes.end() || bytes.sliced(at - bytes.begin()).startsWith("\r\n")) {
        return QByteArrayLiteral("\r\n");
    }
    return QByteArray(1, *at);
}

} // namespace

ParsedIni::ParsedIni(QByteArray content)
    : bytes_(std::move(content)), encoding_(TextEncoding::kUtf8), lineEnd_(FirstLineEnd(bytes_)),
      allAscii_(AllAscii(bytes_)), seed_(QHashSeed::globalSeed()),
      sectionTable_(static_cast<std::size_t>(bytes_.size()) / kUsualSection),
      entryTable_(static_cast<std::size_t>(bytes_.size()) / kUsualLine) {
    if (!allAscii_) {
        const qsizetype start = HasByteOrderMark(bytes_) ? kByteOrderMarkLength : 0;
        encoding_ = EncodingOf(QByteArrayView(bytes_).sliced(start));
    }
    entries_.reserve(static_cast<std::size_t>(bytes_.size()) / kUsualLine);
    ParseLines();
}

void ParsedIni::ParseLines() {
    const char* const data = bytes_.constData();
    const auto size = static_cast<std::uint32_t>(std::min(bytes_.size(), kParsedBytes));
    std::uint32_t at = HasByteOrderMark(bytes_) ? kByteOrderMarkLength : 0;
    while (at < size) {
        const std::uint32_t begin = at;
        std::uint32_t equals = kNoEquals;
        while (at < size && !kEndsKey[static_cast<uchar>(data[at])]) {
            ++at;
        }
        if (at < size && data[at] == '=') {
            equals = at;
            while (at < size && !IsLineEnd(data[at])) {
                ++at;
            }
        }
        const IniRange line{begin, at};
        if (at < size) {
            at += data[at] == '\r' && at + 1 < size && data[at + 1] == '\n' ? 2 : 1;
        }
        ParseLine(line, equals, at);
    }
}

void ParsedIni::ParseLine(IniRange line, std::uint32_t equals, std::uint32_t next) {
    const IniRange text = WithoutBlanks(line);
    if (text.begin == text.end) {
        return;
    }
    const char first = bytes_.at(text.begin);
    const bool indented = text.begin != line.begin;
    if (first == '[') {
        const qsizetype bracket = View(text).lastIndexOf(']');
        if (!indented || (bracket > 0 && equals == kNoEquals)) {
            const std::uint32_t end =
                bracket > 0 ? text.begin + static_cast<std::uint32_t>(bracket) : text.end;
            OpenSection({text.begin + 1, end}, next);
            return;
        }
    }
    if (!sections_.empty()) {
        sections_.back().end = next;
    }
    const bool comment = !indented && (first == ';' || first == '#');
    if (!comment && !hidden_ && equals != kNoEquals && equals != text.begin) {
        AddEntry(static_cast<std::uint32_t>(sections_.size() - 1), {text.begin, equals},
                 {equals + 1, line.end});
    }
}

void ParsedIni::OpenSection(IniRange name, std::uint32_t next) {
    const auto index = static_cast<std::uint32_t>(sections_.size());
    name = WithoutBlanks(name);
    sections_.push_back({name, next});
    const std::uint64_t hash = Hash(name, seed_);
    const auto same = [&](std::uint32_t other) { return Same(sections_[other].name, name); };
    hidden_ = sectionTable_.Find(hash, same) != FoldedTable::kNone;
    if (!hidden_) {
        sectionTable_.Insert(hash, index);
    }
}

void ParsedIni::AddEntry(std::uint32_t section, IniRange key, IniRange value) {
    const auto index = static_cast<std::uint32_t>(entries_.size());
    key = WithoutBlanks(key);
    while (value.begin < value.end && IsBlank(bytes_.at(value.begin))) {
        ++value.begin;
    }
    const std::uint64_t hash = Hash(key, KeySeed(section));
    const auto same = [&](std::uint32_t other) {
        return entries_[other].section == section && Same(entries_[other].key, key);
    };
    if (entryTable_.Find(hash, same) == FoldedTable::kNone) {
        entries_.push_back({section, key, value});
        entryTable_.Insert(hash, index);
    }
}

void ParsedIni::ReplaceValue(const IniEntry& entry, const QByteArray& value) {
    const auto index = static_cast<std::size_t>(&entry - entries_.data());
    const IniRange place = entry.value;
    Splice(place.begin, place.end, value);
    // An empty value begins where it ends, and has been moved as a whole.
    entries_[index].value = {place.begin, place.begin + static_cast<std::uint32_t>(value.size())};
}

void ParsedIni::AppendEntry(const IniSection& section, const QByteArray& before, const QByteArray& key,
                            const QByteArray& value) {
    const auto index = static_cast<std::uint32_t>(&section - sections_.data());
    const std::uint32_t at = section.end;
    const QByteArray line = before + key + '=' + value;
    Splice(at, at, line + lineEnd_);
    const std::uint32_t begin = at + static_cast<std::uint32_t>(before.size());
    const std::uint32_t equals = begin + static_cast<std::uint32_t>(key.size());
    AddEntry(index, {begin, equals}, {equals + 1, at + static_cast<std::uint32_t>(line.size())});
}

// Exchanges bytes and moves every place behind them.
void ParsedIni::Splice(std::uint32_t begin, std::uint32_t end, const QByteArray& added) {
    bytes_.replace(begin, end - begin, added);
    allAscii_ = allAscii_ && AllAscii(added);
    // Modulo 2^32, as places are: a shorter text moves them back.
    const std::uint32_t distance = static_cast<std::uint32_t>(added.size()) - (end - begin);
    const auto move = [&](std::uint32_t& place) { place += place >= end ? distance : 0; };
    for (IniSection& section : sections_) {
        move(section.name.begin);
        move(section.name.end);
        move(section.end);
    }
    for (IniEntry& entry : entries_) {
        move(entry.key.begin);
        move(entry.key.end);
        move(entry.value.begin);
        move(entry.value.end);
    }
}

const IniSection* ParsedIni::Section(QStringView name) const {
    const std::uint32_t index = SectionIndex(name);
    return index == FoldedTable::kNone ? nullptr : &sections_[index];
}

const IniEntry* ParsedIni::Entry(QStringView section, QStringView key) const {
    const std::uint32_t sectionIndex = SectionIndex(section);
    if (sectionIndex == FoldedTable::kNone) {
        return nullptr;
    }
    const FoldedText name(key);
    const auto same = [&](std::uint32_t other) {
        return entries_[other].section == sectionIndex && Same(entries_[other].key, name);
    };
    // Keys are mostly asked for in the order in which they stand.
    std::uint32_t index = next_;
    if (index >= entries_.size() || !same(index)) {
        index = entryTable_.Find(name.Hash(KeySeed(sectionIndex)), same);
    }
    if (index == FoldedTable::kNone) {
        return nullptr;
    }
    next_ = index + 1;
    return &entries_[index];
}

QString ParsedIni::Value(const IniEntry& entry, qsizetype limit) const {
    const QByteArrayView bytes = View(entry.value);
    if (allAscii_) {
        return QString::fromLatin1(bytes.first(std::min(bytes.size(), limit)));
    }
    // No character takes more than four bytes.
    QString value = DecodeAs(encoding_, bytes.first(std::min(bytes.size(), 4 * limit)));
    if (value.size() > limit) {
        // A pair of surrogates is one character and is not cut in two.
        value.truncate(value[limit - 1].isHighSurrogate() ? limit - 1 : limit);
    }
    return value;
}

std::uint32_t ParsedIni::SectionIndex(QStringView name) const {
    if (!asked_ || name != asked_->name) {
        const FoldedText text(name);
        const auto same = [&](std::uint32_t index) { return Same(sections_[index].name, text); };
        asked_ = Asked{name.toString(), sectionTable_.Find(text.Hash(seed_), same)};
    }
    return asked_->index;
}

QByteArrayView ParsedIni::View(IniRange range) const {
    return {bytes_.constData() + range.begin, static_cast<qsizetype>(range.end - range.begin)};
}

IniRange ParsedIni::WithoutBlanks(IniRange range) const {
    const char* const data = bytes_.constData();
    while (range.begin < range.end && IsBlank(data[range.begin])) {
        ++range.begin;
    }
    while (range.begin < range.end && IsBlank(data[range.end - 1])) {
        --range.end;
    }
    return range;
}

bool ParsedIni::IsAscii(IniRange range) const {
    return allAscii_ || AllAscii(View(range));
}

std::uint64_t ParsedIni::Hash(IniRange range, std::uint64_t seed) const {
    return IsAscii(range) ? FoldedText::HashOfAscii(View(range), seed)
                          : FoldedText(DecodeAs(encoding_, View(range))).Hash(seed);
}

bool ParsedIni::Same(IniRange range, const FoldedText& text) const {
    return IsAscii(range) ? text.EqualsAscii(View(range))
                          : text.Equals(FoldedText(DecodeAs(encoding_, View(range))));
}

bool ParsedIni::Same(IniRange a, IniRange b) const {
    const QString text = DecodeAs(encoding_, View(a));
    return Same(b, FoldedText(text));
}

// Keys of different sections start from different seeds.
std::uint64_t ParsedIni::KeySeed(std::uint32_t section) const {
    return seed_ + (section + 1ULL) * 0xC2B2AE3D27D4EB4F;
}
