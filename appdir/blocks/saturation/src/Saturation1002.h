// Saturation: limits its input to the band between the lower and the upper limit.
#pragma once

class Saturation1002
{
public:
    double *u = nullptr;
    double *y = nullptr;
    double upper = 1.0;
    double lower = -1.0;
    int mode = 0;
    int width = 1;

    void Run()
    {
        const double low = mode == 0 ? -upper : lower;
        for (int i = 0; i < width; ++i)
            y[i] = u[i] > upper ? upper : (u[i] < low ? low : u[i]);
    }
};
