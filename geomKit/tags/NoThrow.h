/// @file
/// `NoThrow`, a stream kept from throwing. Internal.
#pragma once

#include <ios>

namespace geomKit::detail {

/// While it lives, the stream only remembers its failures, whatever it was told to throw.
class NoThrow {
public:
    explicit NoThrow(std::ios& stream) : stream_(stream), wanted_(stream.exceptions()) {
        stream_.exceptions(std::ios::goodbit);
    }
    ~NoThrow() {
        try {
            stream_.exceptions(wanted_);
        } catch (...) {
            // A failed stream throws as soon as it may again. The caller learns of the failure from
            // the function's result.
        }
    }
    NoThrow(const NoThrow&) = delete;
    NoThrow& operator=(const NoThrow&) = delete;

private:
    std::ios& stream_;
    std::ios::iostate wanted_;
};

}  // namespace geomKit::detail
