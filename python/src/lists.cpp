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

// Anything NumPy reads as an (N, 3) array of floats; an empty sequence is an
// empty list whatever its shape.
Vec3List vectors_from_numpy(py::array_t<double, py::array::c_style | py::array::forcecast> const& array) {
    if (array.size() == 0) {
        return {};
    }
    if (array.ndim() != 2 || array.shape(1) != 3) {
        throw py::value_error("expected an array of shape (N, 3)");
    }
    auto const cells = array.unchecked<2>();
    Vec3List vectors;
    vectors.reserve(static_cast<std::size_t>(cells.shape(0)));
    for (py::ssize_t row = 0; row < cells.shape(0); ++row) {
        vectors.push_back({cells(row, 0), cells(row, 1), cells(row, 2)});
    }
    return vectors;
}

void bind_vector_list(py::module_& module) {
    auto list = bind_list<Vec3List>(module, "Vec3List");
    // Tried before the element-by-element constructor, so that an array or a
    // list of triples converts in one pass.
    list.def(py::init(&vectors_from_numpy), py::arg("array"), py::prepend());
    list.def("to_numpy", &vectors_to_numpy, "A float64 array of shape (N, 3), a copy.");
    list.def(
        "__array__",
        [](Vec3List const& vectors, py::object const& dtype) -> py::object {
            py::object array = vectors_to_numpy(vectors);
            return dtype.is_none() ? array : array.attr("astype")(dtype);
        },
        py::arg("dtype") = py::none());
}

}  // namespace

void bind_lists(py::module_& module) {
    bind_list<std::vector<model::Diagnostic>>(module, "DiagnosticList");
    bind_list<std::vector<model::SourceFile>>(module, "SourceFileList");
    bind_vector_list(module);
    bind_list<std::vector<chem::AtomSite>>(module, "AtomSiteList");
    bind_list<std::vector<chem::ChemicalSystem>>(module, "ChemicalSystemList");
    bind_list<std::vector<chem::GeometryFrame>>(module, "GeometryFrameList");
    bind_list<std::vector<qc::CalculationJob>>(module, "CalculationJobList");
    bind_list<std::vector<qc::TaskKind>>(module, "TaskKindList");
    bind_list<std::vector<qc::StepId>>(module, "StepIdList");
    bind_list<std::vector<qc::CalculationStep>>(module, "CalculationStepList");
    bind_list<std::vector<qc::EnergyRecord>>(module, "EnergyRecordList");
    bind_list<std::vector<qc::ConvergenceCriterion>>(module, "ConvergenceCriterionList");
    bind_list<std::vector<qc::AnalysisBlock>>(module, "AnalysisBlockList");
    bind_list<std::vector<qc::VibrationalMode>>(module, "VibrationalModeList");
    bind_list<std::vector<qc::ExcitationContribution>>(module, "ExcitationContributionList");
    bind_list<std::vector<qc::AbsorptionPeak>>(module, "AbsorptionPeakList");
    bind_list<std::vector<qc::ExcitedState>>(module, "ExcitedStateList");
    bind_list<std::vector<qc::Orbital>>(module, "OrbitalList");
    bind_list<std::vector<qc::PermanentDipole>>(module, "PermanentDipoleList");
    bind_list<std::vector<qc::AtomicChargeRecord>>(module, "AtomicChargeRecordList");
    bind_list<std::vector<qc::ScalarProperty>>(module, "ScalarPropertyList");
}

}  // namespace morv::python
