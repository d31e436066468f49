#pragma once

#include <morv/chem/frame.hpp>
#include <morv/chem/system.hpp>
#include <morv/chem/vec3.hpp>
#include <morv/model/diagnostic.hpp>
#include <morv/model/entity_id.hpp>
#include <morv/model/equality.hpp>
#include <morv/model/extension_value.hpp>
#include <morv/model/parse_result.hpp>
#include <morv/model/source_file.hpp>
#include <morv/qc/analysis_block.hpp>
#include <morv/qc/convergence.hpp>
#include <morv/qc/energy.hpp>
#include <morv/qc/ids.hpp>
#include <morv/qc/job.hpp>
#include <morv/qc/metadata.hpp>
#include <morv/qc/program.hpp>
#include <morv/qc/step.hpp>

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {

// Everything that one run of a calculation program did and found.
struct Document {
    ProgramInfo program;
    Normalization normalization;
    std::vector<model::SourceFile> sources;
    std::vector<chem::ChemicalSystem> systems;
    std::vector<chem::GeometryFrame> frames;
    std::vector<CalculationJob> jobs;
    std::vector<CalculationStep> steps;
    std::vector<AnalysisBlock> analyses;
    std::map<std::string, MetadataValue> metadata;
    std::map<std::string, model::ExtensionValue> extensions;
};

inline auto fields_of(Document const& d) {
    return std::tie(d.program, d.normalization, d.sources, d.systems, d.frames, d.jobs, d.steps, d.analyses,
                    d.metadata, d.extensions);
}

MORV_DEFINE_EQUALITY(Document)

}  // namespace morv::qc
