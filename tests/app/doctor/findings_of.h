// Reads back what a check reports.
#pragma once

#include "app/findings/finding_report.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

class FindingsOf {
public:
    FindingsOf() : file_(std::tmpfile()), report(file_, true) {}
    ~FindingsOf() { std::fclose(file_); }
    FindingsOf(const FindingsOf&) = delete;
    FindingsOf& operator=(const FindingsOf&) = delete;

    std::vector<QJsonObject> All() {
        std::rewind(file_);
        QByteArray text;
        std::array<char, 65536> block{};
        while (const std::size_t size = std::fread(block.data(), 1, block.size(), file_)) {
            text.append(block.data(), static_cast<qsizetype>(size));
        }
        std::vector<QJsonObject> findings;
        for (const QByteArray& line : text.split('\n')) {
            if (!line.isEmpty()) {
                findings.push_back(QJsonDocument::fromJson(line).object());
            }
        }
        return findings;
    }
    // How many findings of this level have the words in their path or their text.
    std::ptrdiff_t Count(const char* level, const char* words) {
        const auto findings = All();
        return std::count_if(findings.begin(), findings.end(), [&](const QJsonObject& finding) {
            const QString all = finding[QStringLiteral("path")].toString() + u' ' +
                                finding[QStringLiteral("text")].toString();
            return finding[QStringLiteral("level")].toString() == QLatin1StringView(level) &&
                   all.contains(QString::fromUtf8(words));
        });
    }

private:
    std::FILE* file_;

public:
    FindingReport report;
};
