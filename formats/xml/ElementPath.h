#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace intake {

/// Where in a document a reader is: follows the elements that the reader knows, and passes over all
/// others with whatever they hold.
class ElementPath {
public:
    using Place = uint8_t;
    static constexpr Place OUTSIDE = 0;         // of the root
    static constexpr Place PASSED_OVER = 0xFF;  // in an element that means nothing here

    /// The element of that name within `parent` leads to `place`.
    struct Step {
        Place parent;
        std::string_view element;
        Place place;
    };

    /// `steps` outlives this object. No path of them is longer than DEEPEST.
    explicit ElementPath(std::span<const Step> steps) : steps_(steps) {}

    void restart() { depth_ = passedOver_ = 0; }

    Place place() const { return passedOver_ > 0 ? PASSED_OVER : places_[depth_]; }

    /// Enters an element, and returns the place that it is.
    Place enter(std::string_view element) {
        if (passedOver_ == 0) {
            for (const Step& step : steps_) {
                if (step.parent == places_[depth_] && step.element == element) {
                    return places_[++depth_] = step.place;
                }
            }
        }
        ++passedOver_;
        return PASSED_OVER;
    }

    /// Leaves the element that was entered last, and returns the place that it was.
    Place leave() {
        if (passedOver_ > 0) {
            --passedOver_;
            return PASSED_OVER;
        }
        return places_[depth_--];
    }

private:
    static constexpr size_t DEEPEST = 8;

    std::span<const Step> steps_;
    std::array<Place, DEEPEST + 1> places_{OUTSIDE};
    size_t depth_ = 0;
    size_t passedOver_ = 0;  // elements that are open and mean nothing
};

}  // namespace intake
