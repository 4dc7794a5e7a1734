/// @file
/// `NoThrow`, a stream kept from throwing. Internal.
#pragma once

#include <ios>

/// While it lives, the stream only remembers its failures, whatever it was told to throw.
class NoThrow {
public:
    explicit NoThrow(std::ios& stream) : stream_(stream), wanted_(stream.exceptions()) {
        stream_.exceptions(std::ios::goodbit);
    }
    ~NoThrow() {
        try {
            stream_.exceptions(wanted_);
        } catch (const std::ios::failure&) {
            // It is set all the same; the failure is what the caller is told by value.
        }
    }
    NoThrow(const NoThrow&) = delete;
    NoThrow& operator=(const NoThrow&) = delete;

private:
    std::ios& stream_;
    std::ios::iostate wanted_;
};
