// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "vorn/geometry/matrix.h"

#include <memory>
#include <vector>

namespace {

constexpr int pointCount = 1'000'000;

CvornMatrix someMatrix() {
    const float shift[] = {1, 2, 3};
    CvornMatrix matrix;
    matrix.Translation(shift, 0);
    matrix.RotateXDeg(30, 1);
    matrix.RotateZDeg(50, 1);
    return matrix;
}

/// Points that a rotation keeps at one distance from its centre, however often they are transformed.
struct Cloud {
    std::vector<float> points = std::vector<float>(pointCount * 3, 1.0F);
    CvornMatrix matrix = someMatrix();
};

bench::Sides transformSides() {
    // One for both sides: where in memory it lies must not tell between them.
    const auto cloud = std::make_shared<Cloud>();
    return {[=] {
                for (int i = 0; i < pointCount; i++)
                    cloud->matrix.Transform3fa(&cloud->points[i * 3]);
            },
            [=] {
                const float* m = cloud->matrix.m_afElement;
                for (int i = 0; i < pointCount; i++) {
                    float* p = &cloud->points[i * 3];
                    const float x = p[0], y = p[1], z = p[2];
                    p[0] = m[0] * x + m[4] * y + m[8] * z + m[12];
                    p[1] = m[1] * x + m[5] * y + m[9] * z + m[13];
                    p[2] = m[2] * x + m[6] * y + m[10] * z + m[14];
                }
            }};
}

bench::Sides multiplySides() {
    const auto ours = std::make_shared<CvornMatrix>(), plain = std::make_shared<CvornMatrix>();
    CvornMatrix turn;
    turn.RotateXDeg(1, 0);
    return {[=] {
                ours->Multiply(turn);
                bench::keep(*ours);
            },
            [=] {
                float* m = plain->m_afElement;
                const float* b = turn.m_afElement;
                float t[16];
                for (int i = 0; i < 16; i++)
                    t[i] = m[i];
                for (int c = 0; c < 4; c++) {
                    for (int r = 0; r < 4; r++)
                        m[c * 4 + r] = t[r] * b[c * 4] + t[4 + r] * b[c * 4 + 1] + t[8 + r] * b[c * 4 + 2] +
                                       t[12 + r] * b[c * 4 + 3];
                }
                bench::keep(*plain);
            }};
}

const bench::Registration transform{
    {"geometry: Transform3fa of 1 M points", "a loop over the floats", 1.05, transformSides}};
const bench::Registration multiply{
    {"geometry: Multiply", "a loop over the 16 elements", 1.05, multiplySides}};

} // namespace
