#include "framework/superposition.hpp"

#include <cmath>

namespace morv::qc::import {

namespace {

using Matrix4 = std::array<std::array<double, 4>, 4>;

// The eigenvector of the largest eigenvalue of a symmetric matrix, by
// Jacobi's rotations, which for four rows converge in a few sweeps.
std::array<double, 4> leading_eigenvector(Matrix4 a) {
    Matrix4 v{};
    for (int i = 0; i < 4; ++i) {
        v[i][i] = 1.0;
    }
    for (int sweep = 0; sweep < 50; ++sweep) {
        double off = 0.0;
        for (int p = 0; p < 4; ++p) {
            for (int q = p + 1; q < 4; ++q) {
                off += a[p][q] * a[p][q];
            }
        }
        if (off < 1e-30) {
            break;
        }
        for (int p = 0; p < 4; ++p) {
            for (int q = p + 1; q < 4; ++q) {
                if (std::abs(a[p][q]) < 1e-300) {
                    continue;
                }
                double const theta = (a[q][q] - a[p][p]) / (2.0 * a[p][q]);
                double const t = (theta >= 0 ? 1.0 : -1.0) / (std::abs(theta) + std::sqrt(theta * theta + 1.0));
                double const c = 1.0 / std::sqrt(t * t + 1.0);
                double const s = t * c;
                for (int k = 0; k < 4; ++k) {
                    double const akp = a[k][p];
                    double const akq = a[k][q];
                    a[k][p] = c * akp - s * akq;
                    a[k][q] = s * akp + c * akq;
                }
                for (int k = 0; k < 4; ++k) {
                    double const apk = a[p][k];
                    double const aqk = a[q][k];
                    a[p][k] = c * apk - s * aqk;
                    a[q][k] = s * apk + c * aqk;
                }
                for (int k = 0; k < 4; ++k) {
                    double const vkp = v[k][p];
                    double const vkq = v[k][q];
                    v[k][p] = c * vkp - s * vkq;
                    v[k][q] = s * vkp + c * vkq;
                }
            }
        }
    }
    int best = 0;
    for (int i = 1; i < 4; ++i) {
        if (a[i][i] > a[best][best]) {
            best = i;
        }
    }
    return {v[0][best], v[1][best], v[2][best], v[3][best]};
}

chem::Vec3 centroid(std::vector<chem::Vec3> const& points) {
    chem::Vec3 sum;
    for (auto const& p : points) {
        sum.x += p.x;
        sum.y += p.y;
        sum.z += p.z;
    }
    auto const n = static_cast<double>(points.size());
    return {sum.x / n, sum.y / n, sum.z / n};
}

}  // namespace

chem::Vec3 rotate(Rotation const& r, chem::Vec3 const& v) {
    return {r[0][0] * v.x + r[0][1] * v.y + r[0][2] * v.z, r[1][0] * v.x + r[1][1] * v.y + r[1][2] * v.z,
            r[2][0] * v.x + r[2][1] * v.y + r[2][2] * v.z};
}

// Horn's closed form: the unit quaternion of the best rotation is the
// leading eigenvector of a 4x4 matrix built from the points' correlations.
std::optional<Rotation> rotation_between(std::vector<chem::Vec3> const& from, std::vector<chem::Vec3> const& to,
                                         double tolerance) {
    if (from.empty() || from.size() != to.size()) {
        return std::nullopt;
    }
    auto const cf = centroid(from);
    auto const ct = centroid(to);
    double s[3][3] = {};
    for (std::size_t i = 0; i < from.size(); ++i) {
        double const a[3] = {from[i].x - cf.x, from[i].y - cf.y, from[i].z - cf.z};
        double const b[3] = {to[i].x - ct.x, to[i].y - ct.y, to[i].z - ct.z};
        for (int j = 0; j < 3; ++j) {
            for (int k = 0; k < 3; ++k) {
                s[j][k] += a[j] * b[k];
            }
        }
    }
    Matrix4 const n = {{{s[0][0] + s[1][1] + s[2][2], s[1][2] - s[2][1], s[2][0] - s[0][2], s[0][1] - s[1][0]},
                        {s[1][2] - s[2][1], s[0][0] - s[1][1] - s[2][2], s[0][1] + s[1][0], s[2][0] + s[0][2]},
                        {s[2][0] - s[0][2], s[0][1] + s[1][0], -s[0][0] + s[1][1] - s[2][2], s[1][2] + s[2][1]},
                        {s[0][1] - s[1][0], s[2][0] + s[0][2], s[1][2] + s[2][1], -s[0][0] - s[1][1] + s[2][2]}}};
    auto const q = leading_eigenvector(n);
    double const w = q[0];
    double const x = q[1];
    double const y = q[2];
    double const z = q[3];
    Rotation const r = {{{w * w + x * x - y * y - z * z, 2 * (x * y - w * z), 2 * (x * z + w * y)},
                         {2 * (x * y + w * z), w * w - x * x + y * y - z * z, 2 * (y * z - w * x)},
                         {2 * (x * z - w * y), 2 * (y * z + w * x), w * w - x * x - y * y + z * z}}};
    for (std::size_t i = 0; i < from.size(); ++i) {
        auto const moved = rotate(r, {from[i].x - cf.x, from[i].y - cf.y, from[i].z - cf.z});
        if (std::abs(moved.x + ct.x - to[i].x) > tolerance || std::abs(moved.y + ct.y - to[i].y) > tolerance ||
            std::abs(moved.z + ct.z - to[i].z) > tolerance) {
            return std::nullopt;
        }
    }
    return r;
}

}  // namespace morv::qc::import
