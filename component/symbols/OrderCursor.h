#pragma once
#include <cstddef>
#include <iterator>

// A remembered position in one order of the label store, so that a run over the
// order by index costs one step per element although the order has no random
// access. Index 0 always means the order's first element, even when labels have
// come in before it since the cursor was last set.
template <class Order> class OrderCursor
{
public:
    // The key at `index`, or nullptr when the order is shorter.
    const typename Order::value_type* Seek(const Order& order, size_t index)
    {
        if (index >= order.size())
            return nullptr;
        // Only a step forward from a set cursor, or standing still, can use it.
        const bool stays = index == index_ && index != 0;
        const bool forward = index > index_ && index_ != 0;
        if (!stays && !forward) {
            at_ = order.begin();
            index_ = 0;
        }
        std::advance(at_, index - index_);
        index_ = index;
        return &*at_;
    }

    void Reset() { index_ = 0; }

private:
    typename Order::const_iterator at_;
    size_t index_ = 0;
};
