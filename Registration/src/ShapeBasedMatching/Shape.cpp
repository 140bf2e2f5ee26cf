#include "Registration/private/ShapeBasedMatching/Shape.h"

#include <cmath>

#include "Registration/private/ShapeBasedMatching/GradientPlane.h"

namespace mox::registration {

using Vector = math::Vector2<double>;

namespace {

double snapped(double value)
{
    double const nearest = std::round(value);
    return std::abs(value - nearest) <= 1e-12 ? nearest : value;
}

double radians(double degrees)
{
    return degrees * 3.141592653589793 / 180.0;
}

} // namespace

Rotation::Rotation(double degrees)
    : cosine_(snapped(std::cos(radians(degrees))))
    , sine_(snapped(std::sin(radians(degrees))))
{
}

void Shape::place(Rotation const& rotation, double scale, int columns, int rows, std::vector<PlacedPoint>& placed) const
{
    placed.clear();
    for (std::size_t i = 0; i < positions.size(); ++i) {
        Vector const position = rotation.turned(positions[i]) * scale;
        double const x = std::floor(position[0] + 0.5);
        double const y = std::floor(position[1] + 0.5);
        if (!(std::abs(x) < columns && std::abs(y) < rows)) {
            continue;
        }
        Vector direction = rotation.turned(directions[i]) * scale;
        double const length = direction.length();
        if (length > 0.0) {
            direction /= length;
        }
        placed.push_back({static_cast<int>(x), static_cast<int>(y), direction[0], direction[1]});
    }
}

Vector centreOf(ImageModel const& image)
{
    unsigned int const column = image.getSize(COLUMNS) / 2;
    unsigned int const row = image.getSize(ROWS) / 2;
    return {static_cast<double>(column), static_cast<double>(row)};
}

Shape maskToShape(ImageModel const& gradientX, ImageModel const& gradientY, ImageModel const* mask)
{
    std::vector<double> const x = readPlane(gradientX);
    std::vector<double> const y = readPlane(gradientY);
    std::vector<double> const selected = mask != nullptr ? readPlane(*mask) : std::vector<double>(x.size(), 1.0);
    std::size_t const columns = gradientX.getSize(COLUMNS);
    Vector const centre = centreOf(gradientX);
    Shape shape;
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (selected[i] != 0.0 && (x[i] != 0.0 || y[i] != 0.0)) {
            std::size_t const row = i / columns;
            Vector const position(static_cast<double>(i % columns), static_cast<double>(row));
            shape.positions.push_back(position - centre);
            shape.directions.emplace_back(x[i], y[i]);
        }
    }
    return shape;
}

} // namespace mox::registration
