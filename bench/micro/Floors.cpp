// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Floors.h"

#include "decoding/StatusCodeMapping.h"
#include "WalkedReply.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

bool LookAtFile(const char* path)
{
    struct stat properties = {};
    return stat(path, &properties) == 0;
}

bool ReadAndWalk(const char* path, Walk& walk)
{
    if (!LookAtFile(path)) {
        return false;
    }
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    std::array<unsigned char, 2048> buffer;
    const ssize_t length = read(descriptor, buffer.data(), buffer.size());
    close(descriptor);
    return length > 0 && WalkStandardReply(walk, buffer.data(), static_cast<unsigned long>(length));
}

ConditionTable::ConditionTable()
{
    constexpr unsigned long CodeCount = 65536;
    m_conditions.reserve(CodeCount);
    for (unsigned long code = 0; code < CodeCount; ++code) {
        m_conditions.push_back(static_cast<unsigned char>(GetErrorStatusEnum(code)));
    }
}

enErrorStatus ConditionTable::condition(unsigned long code) const
{
    return code < m_conditions.size() ? static_cast<enErrorStatus>(m_conditions[code]) : ERR_UNKNOWN;
}

bool DiffersInPlace(const stPrinterState& a, const stPrinterState& b)
{
    return a.enCurrentStatus != b.enCurrentStatus || a.dwRemainingToner != b.dwRemainingToner ||
        a.listError != b.listError || a.listWarning != b.listWarning;
}

bool ListsThesePrinters(const char* path, const std::vector<QByteArray>& namesAndPorts)
{
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    struct stat properties = {};
    if (descriptor < 0 || fstat(descriptor, &properties) != 0) {
        return false;
    }
    std::vector<char> buffer(static_cast<std::size_t>(properties.st_size));
    const ssize_t length = read(descriptor, buffer.data(), buffer.size());
    close(descriptor);
    std::string_view text(buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    auto next = namesAndPorts.begin();
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const std::size_t equals = line.find('=');
        const std::string_view key = line.substr(0, equals);
        if (key == "Name" || key == "Port") {
            if (next == namesAndPorts.end() || line.substr(equals + 1) != next->constData()) {
                return false;
            }
            ++next;
        }
    }
    return next == namesAndPorts.end();
}

void AppendWhenOn(const std::atomic<bool>& isOn, const char* text)
{
    if (isOn.load(std::memory_order_relaxed)) {
        puts(text);
    }
}

bool AppendLine(const char* path, const QByteArray& line)
{
    const int descriptor = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    struct stat properties = {};
    if (descriptor < 0 || fstat(descriptor, &properties) != 0) {
        return false;
    }
    const ssize_t written = write(descriptor, line.constData(), static_cast<std::size_t>(line.size()));
    close(descriptor);
    return written == line.size();
}
