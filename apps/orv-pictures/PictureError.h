#pragma once

#include <stdexcept>

namespace orv::pictures {

/// Something given to the program does not fit; the text is one sentence that names it.
class PictureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace orv::pictures
