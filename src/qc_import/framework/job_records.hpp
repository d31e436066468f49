#pragma once
// What the reader of one job has made of it so far: the job, the system its
// geometries are of and the step that records go to. Every program's reader
// keeps these the same way.
#include "framework/document_builder.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace morv::qc::import {

class JobRecords {
protected:
    explicit JobRecords(DocumentBuilder& builder) : builder_(builder) {}

    // Whether a geometry of these atoms is one of the job's: the first makes
    // the job's system, and a later one of another atom count is not read.
    bool takes_geometry(std::vector<int> const& atomic_numbers, std::string const& label,
                        model::SourceSpan const& where) {
        if (!system_) {
            system_ = builder_.system_for(atomic_numbers, state_, label, where);
            builder_.assign_system(job_, *system_);
            atom_count_ = atomic_numbers.size();
            return true;
        }
        return atomic_numbers.size() == atom_count_;
    }

    // The open step, else a new one without a geometry that starts at `where`.
    StepId open_step(model::SourceSpan const& where) {
        if (!step_) {
            step_ = builder_.add_step(job_, std::nullopt, where);
        }
        return *step_;
    }

    void finish_job(std::string const& label) { system_ = builder_.finish_job(job_, system_, state_, label); }

    DocumentBuilder& builder_;
    JobId job_;
    std::optional<chem::ElectronicState> state_;
    std::optional<chem::SystemId> system_;
    std::size_t atom_count_ = 0;
    std::optional<StepId> step_;
};

}  // namespace morv::qc::import
