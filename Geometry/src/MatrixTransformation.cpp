#include <Moxelcore/Geometry/MatrixTransformation.h>

#include <cmath>

#include "Core/private/Helper/raise.h"
#include "Geometry/private/refuseIndex.h"

namespace mox::geometry {

namespace {

struct Element {
    unsigned int row, column;
};

/// The element of a flat index: the last column, the linear part row by row, in the plane also the last row.
template <unsigned int D>
Element elementAt(unsigned int index)
{
    constexpr unsigned int numOfEntries = D == 2 ? 8 : 12;
    if (index >= numOfEntries) {
        refuseIndex("Geometry/src/MatrixTransformation", index, numOfEntries);
    }
    return index < D ? Element{index, D} : Element{(index - D) / D, (index - D) % D};
}

} // namespace

template <unsigned int D>
MatrixTransformation<D>::MatrixTransformation(unsigned int numOfParameter)
    : numOfParameter_(numOfParameter)
{
    for (unsigned int i = 0; i <= D; ++i) {
        m_[i][i] = 1.0;
    }
}

template <unsigned int D>
void MatrixTransformation<D>::map(Point& point) const
{
    double image[D + 1];
    for (unsigned int row = 0; row <= D; ++row) {
        image[row] = m_[row][0] * point[0];
        for (unsigned int column = 1; column < D; ++column) {
            image[row] += m_[row][column] * point[column];
        }
        image[row] += m_[row][D];
    }
    if (std::abs(image[D]) < 1e-8) {
        helper::raise<RuntimeError>("Geometry/private/ProjectiveTransformation2DPrivate", "bad precision.");
    }
    for (unsigned int i = 0; i < D; ++i) {
        point[i] = image[i] / image[D];
    }
}

template <unsigned int D>
void MatrixTransformation<D>::map(Point* points, std::size_t count) const
{
    for (std::size_t i = 0; i < count; ++i) {
        MatrixTransformation::map(points[i]);
    }
}

template <unsigned int D>
unsigned int MatrixTransformation<D>::getNumOfParameter() const
{
    return numOfParameter_;
}

template <unsigned int D>
double MatrixTransformation<D>::getParam(unsigned int index) const
{
    Element const element = elementAt<D>(index);
    return m_[element.row][element.column];
}

template <unsigned int D>
void MatrixTransformation<D>::setParam(unsigned int index, double value)
{
    Element const element = elementAt<D>(index);
    m_[element.row][element.column] = value;
}

template <unsigned int D>
typename MatrixTransformation<D>::Point MatrixTransformation<D>::getTranslation() const
{
    Point translation;
    for (unsigned int i = 0; i < D; ++i) {
        translation[i] = m_[i][D];
    }
    return translation;
}

template <unsigned int D>
void MatrixTransformation<D>::setTranslation(Point const& translation)
{
    for (unsigned int i = 0; i < D; ++i) {
        m_[i][D] = translation[i];
    }
}

template <unsigned int D>
typename MatrixTransformation<D>::RotationMatrix MatrixTransformation<D>::matrix() const
{
    RotationMatrix matrix;
    for (unsigned int row = 0; row < D; ++row) {
        for (unsigned int column = 0; column < D; ++column) {
            matrix(row, column) = m_[row][column];
        }
    }
    return matrix;
}

template <unsigned int D>
void MatrixTransformation<D>::setMatrix(RotationMatrix const& matrix)
{
    for (unsigned int row = 0; row < D; ++row) {
        for (unsigned int column = 0; column < D; ++column) {
            m_[row][column] = matrix(row, column);
        }
    }
}

template class MatrixTransformation<2>;
template class MatrixTransformation<3>;

} // namespace mox::geometry
