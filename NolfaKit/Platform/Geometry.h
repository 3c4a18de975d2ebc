#pragma once

namespace nolfa {

/// Width and height, in the unit that the context names.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size &) const = default;
};

/// A rectangle whose origin is the lower left corner: a larger y lies higher. The context names the unit.
struct Rectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double centreY() const noexcept { return y + height / 2; }

    bool operator==(const Rectangle &) const = default;
};

/// An affine map: x' = a·x + c·y + e, y' = b·x + d·y + f.
struct Transform {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    bool operator==(const Transform &) const = default;
};

} // namespace nolfa
