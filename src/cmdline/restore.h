#pragma once

// Gives a variable its present value back at the end of the scope.
template <typename Value>
class Restore {
public:
    explicit Restore(Value& variable) : variable_(variable), value_(variable) {}
    ~Restore() { variable_ = value_; }
    Restore(const Restore&) = delete;
    Restore& operator=(const Restore&) = delete;

private:
    Value& variable_;
    const Value value_;
};
