#pragma once

namespace intake {

/// A figure that is taken again and again, and how fast it grows.
class Trend {
public:
    void add(double minutes, double value) {
        ++count_;
        times_ += minutes;
        values_ += value;
        timesSquared_ += minutes * minutes;
        products_ += minutes * value;
    }

    /// Growth per minute of the line that lies nearest to all values (least squares); 0 for fewer
    /// than two of them.
    double slope() const {
        const double spread = count_ * timesSquared_ - times_ * times_;
        return spread > 0 ? (count_ * products_ - times_ * values_) / spread : 0;
    }

private:
    double count_ = 0;
    double times_ = 0;
    double values_ = 0;
    double timesSquared_ = 0;
    double products_ = 0;
};

}  // namespace intake
