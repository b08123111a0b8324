// Gain1001.h: the example gain block's code, y = k * u.
#pragma once

template <typename T>
struct Gain1001 {
    T k = T(1);

    void Run(const T *u, T *y) const { *y = k * *u; }
};
