#pragma once

#include <morv/model/entity_id.hpp>

namespace morv::qc {

struct JobIdTag {};
struct StepIdTag {};
struct EnergyIdTag {};
struct AnalysisIdTag {};

using JobId = model::EntityId<JobIdTag>;
using StepId = model::EntityId<StepIdTag>;
using EnergyId = model::EntityId<EnergyIdTag>;
using AnalysisId = model::EntityId<AnalysisIdTag>;

}  // namespace morv::qc
