#include "bindings.hpp"

#include <pybind11/numpy.h>

namespace morv::python {
namespace {

using Vec3List = std::vector<chem::Vec3>;

py::array_t<double> vectors_to_numpy(Vec3List const& vectors) {
    py::array_t<double> array({static_cast<py::ssize_t>(vectors.size()), py::ssize_t{3}});
    auto cells = array.mutable_unchecked<2>();
    for (py::ssize_t row = 0; row < cells.shape(0); ++row) {
        auto const& vector = vectors[static_cast<std::size_t>(row)];
        cells(row, 0) = vector.x;
        cells(row, 1) = vector.y;
        cells(row, 2) = vector.z;
    }
    return array;
}

void bind_vector_list(py::module_& module) {
    auto list = bind_list<chem::Vec3>(module, "Vec3List");
    list.def(
        "to_numpy", [](Ref<Vec3List> const& self) { return vectors_to_numpy(self.get()); },
        "A float64 array of shape (N, 3), a copy.");
    list.def(
        "__array__",
        [](Ref<Vec3List> const& self, py::object const& dtype) -> py::object {
            py::object array = vectors_to_numpy(self.get());
            return dtype.is_none() ? array : array.attr("astype")(dtype);
        },
        py::arg("dtype") = py::none());
}

}  // namespace

void bind_lists(py::module_& module) {
    bind_list<model::Diagnostic>(module, "DiagnosticList");
    bind_list<model::SourceFile>(module, "SourceFileList");
    bind_vector_list(module);
    bind_list<chem::AtomSite>(module, "AtomSiteList");
    bind_list<chem::ChemicalSystem>(module, "ChemicalSystemList");
    bind_list<chem::GeometryFrame>(module, "GeometryFrameList");
    bind_list<qc::CalculationJob>(module, "CalculationJobList");
    bind_list<qc::TaskKind>(module, "TaskKindList");
    bind_list<qc::StepId>(module, "StepIdList");
    bind_list<qc::CalculationStep>(module, "CalculationStepList");
    bind_list<qc::EnergyRecord>(module, "EnergyRecordList");
    bind_list<qc::ConvergenceCriterion>(module, "ConvergenceCriterionList");
    bind_list<qc::AnalysisBlock>(module, "AnalysisBlockList");
    bind_list<qc::VibrationalMode>(module, "VibrationalModeList");
    bind_list<qc::ExcitationContribution>(module, "ExcitationContributionList");
    bind_list<qc::AbsorptionPeak>(module, "AbsorptionPeakList");
    bind_list<qc::ExcitedState>(module, "ExcitedStateList");
    bind_list<qc::Orbital>(module, "OrbitalList");
    bind_list<qc::PermanentDipole>(module, "PermanentDipoleList");
    bind_list<qc::AtomicChargeRecord>(module, "AtomicChargeRecordList");
    bind_list<qc::ScalarProperty>(module, "ScalarPropertyList");
}

}  // namespace morv::python
