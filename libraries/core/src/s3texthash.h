#pragma once

#include <QString>

#include <bit>
#include <cstring>
#include <unordered_map>
#include <unordered_set>

// For tables of texts that come with the program. qHash() is made to withstand texts that are chosen to collide, and
// its comparison orders as well; both took most of a look-up here.

struct s3TextHash
{
    [[nodiscard]] size_t operator()(const QString &text) const noexcept
    {
        constexpr quint64 factor = 0x9E3779B97F4A7C15; // 2^64 by the golden ratio
        constexpr size_t wordSize = sizeof(quint64);
        const auto *place = reinterpret_cast<const char *>(text.constData());
        size_t left = size_t(text.size()) * sizeof(QChar);
        // Two sums, so that one multiplication needn't wait for the other.
        quint64 even = left;
        quint64 odd = factor;
        for (; left >= 2 * wordSize; left -= 2 * wordSize, place += 2 * wordSize) {
            even = (std::rotl(even, 5) ^ word(place, wordSize)) * factor;
            odd = (std::rotl(odd, 5) ^ word(place + wordSize, wordSize)) * factor;
        }
        if (left > wordSize) {
            odd = (std::rotl(odd, 5) ^ word(place + wordSize, left - wordSize)) * factor;
            left = wordSize;
        }
        even = (std::rotl(even, 5) ^ word(place, left)) * factor;
        const quint64 sum = (even ^ std::rotl(odd, 32)) * factor;
        return size_t(sum ^ (sum >> 32));
    }

private:
    [[nodiscard]] static quint64 word(const char *place, size_t size) noexcept
    {
        quint64 bytes = 0;
        std::memcpy(&bytes, place, size);
        return bytes;
    }
};

struct s3TextEqual
{
    [[nodiscard]] bool operator()(const QString &one, const QString &other) const noexcept
    {
        return one.size() == other.size() &&
               std::memcmp(one.constData(), other.constData(), size_t(one.size()) * sizeof(QChar)) == 0;
    }
};

template<typename Value>
using s3TextMap = std::unordered_map<QString, Value, s3TextHash, s3TextEqual>;
using s3TextSet = std::unordered_set<QString, s3TextHash, s3TextEqual>;
