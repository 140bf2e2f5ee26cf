#pragma once

namespace mox::benchmarks {

/// Adds the rows of training and of classification by a trained model, which the table of cases has no form for.
void registerClassification();

} // namespace mox::benchmarks
