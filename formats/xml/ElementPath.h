#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace intake {

/// Where in a document a reader is: a state machine that follows the elements which the reader
/// knows, and passes over all others with whatever they hold.
class ElementPath {
public:
    using State = uint8_t;
    static constexpr State OUTSIDE = 0;         // of the root
    static constexpr State PASSED_OVER = 0xFF;  // in an element that means nothing here

    /// The element of that name within `parent` leads to `state`.
    struct Step {
        State parent;
        std::string_view element;
        State state;
    };

    /// `steps` outlives this object. No path of them is longer than DEEPEST.
    explicit ElementPath(std::span<const Step> steps) : steps_(steps) {}

    void restart() { depth_ = passedOver_ = 0; }

    State state() const { return passedOver_ > 0 ? PASSED_OVER : states_[depth_]; }

    /// Enters an element, and returns the state that it leads to.
    State enter(std::string_view element) {
        if (passedOver_ == 0) {
            for (const Step& step : steps_) {
                if (step.parent == states_[depth_] && step.element == element) {
                    return states_[++depth_] = step.state;
                }
            }
        }
        ++passedOver_;
        return PASSED_OVER;
    }

    /// Leaves the element that was entered last, and returns the state that ends.
    State leave() {
        if (passedOver_ > 0) {
            --passedOver_;
            return PASSED_OVER;
        }
        return states_[depth_--];
    }

private:
    static constexpr size_t DEEPEST = 8;

    std::span<const Step> steps_;
    std::array<State, DEEPEST + 1> states_{OUTSIDE};
    size_t depth_ = 0;
    size_t passedOver_ = 0;  // elements that are open and mean nothing
};

}  // namespace intake
