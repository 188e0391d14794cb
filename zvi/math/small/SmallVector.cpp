#include "zvi/math/small/SmallVector.h"

#include <cmath>

namespace zvi::lib {

namespace {

template <int N>
void SetZero(double *v) {
    for (int i = 0; i < N; ++i)
        v[i] = 0.0;
}

template <int N>
void Copy(double const *a, double *out) {
    for (int i = 0; i < N; ++i)
        out[i] = a[i];
}

template <int N>
void Add(double const *a, double const *b, double *out) {
    for (int i = 0; i < N; ++i)
        out[i] = a[i] + b[i];
}

template <int N>
void Subtract(double const *a, double const *b, double *out) {
    for (int i = 0; i < N; ++i)
        out[i] = a[i] - b[i];
}

template <int N>
void Scale(double const *a, double factor, double *out) {
    for (int i = 0; i < N; ++i)
        out[i] = a[i] * factor;
}

template <int N>
double Dot(double const *a, double const *b) {
    double sum = a[0] * b[0];
    for (int i = 1; i < N; ++i)
        sum += a[i] * b[i];
    return sum;
}

} // namespace

void zero_vector_2x1(double *v) {
    SetZero<2>(v);
}

void copy_vector_2x1(double const *a, double *out) {
    Copy<2>(a, out);
}

void add_vector_2x1_vector_2x1(double const *a, double const *b, double *out) {
    Add<2>(a, b, out);
}

void subtract_vector_2x1_vector_2x1(double const *a, double const *b, double *out) {
    Subtract<2>(a, b, out);
}

void scale_vector_2x1(double const *a, double factor, double *out) {
    Scale<2>(a, factor, out);
}

double multiply_vector_2x1_vector_2x1(double const *a, double const *b) {
    return Dot<2>(a, b);
}

double norm_vector_2x1(double const *a) {
    return std::sqrt(Dot<2>(a, a));
}

void zero_vector_3x1(double *v) {
    SetZero<3>(v);
}

void copy_vector_3x1(double const *a, double *out) {
    Copy<3>(a, out);
}

void add_vector_3x1_vector_3x1(double const *a, double const *b, double *out) {
    Add<3>(a, b, out);
}

void subtract_vector_3x1_vector_3x1(double const *a, double const *b, double *out) {
    Subtract<3>(a, b, out);
}

void scale_vector_3x1(double const *a, double factor, double *out) {
    Scale<3>(a, factor, out);
}

double multiply_vector_3x1_vector_3x1(double const *a, double const *b) {
    return Dot<3>(a, b);
}

double norm_vector_3x1(double const *a) {
    return std::sqrt(Dot<3>(a, a));
}

void zero_vector_4x1(double *v) {
    SetZero<4>(v);
}

void copy_vector_4x1(double const *a, double *out) {
    Copy<4>(a, out);
}

void add_vector_4x1_vector_4x1(double const *a, double const *b, double *out) {
    Add<4>(a, b, out);
}

void subtract_vector_4x1_vector_4x1(double const *a, double const *b, double *out) {
    Subtract<4>(a, b, out);
}

void scale_vector_4x1(double const *a, double factor, double *out) {
    Scale<4>(a, factor, out);
}

double multiply_vector_4x1_vector_4x1(double const *a, double const *b) {
    return Dot<4>(a, b);
}

double norm_vector_4x1(double const *a) {
    return std::sqrt(Dot<4>(a, a));
}

} // namespace zvi::lib
