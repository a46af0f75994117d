#pragma once

#include <array>

namespace dunkman {

// A 4 x 4 matrix, column after column, as OpenGL takes it.
using Matrix4 = std::array<float, 16>;

// Stores uViewProjection in the basic material.
void setViewProjection(const Matrix4& matrix);

// What it was last set to.
const Matrix4& currentView();

// Sets uViewProjection to the interface view: viewWidth wide, viewWidth / aspectRatio high, its centre
// `lowered` units below the origin.
void setScreenProjection(double lowered = 0.0);

} // namespace dunkman
