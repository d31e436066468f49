#!/usr/bin/env bash
# The dynamic symbol tables of the libraries hold exactly their public
# functions and nothing else.
set -euo pipefail
codec=$1
model=$2
importer=$3

exported() {
  nm -D --defined-only "$1" | awk '{ print $3 }' | c++filt | sort
}

expected_codec=$(sort <<'LIST'
morv::qc::json::deserialize(std::basic_string_view<char, std::char_traits<char> >)
morv::qc::json::serialize[abi:cxx11](morv::model::ParseResult<morv::qc::Document> const&, morv::qc::json::SerializeOptions const&)
morv::qc::json::serialize[abi:cxx11](morv::qc::Document const&, morv::qc::json::SerializeOptions const&)
LIST
)

expected_model=$(sort <<'LIST'
morv::qc::to_string(morv::model::ParseStatus)
morv::qc::to_string(morv::model::Severity)
morv::qc::to_string(morv::qc::ResultProfile)
morv::qc::to_string(morv::qc::ProgramKind)
morv::qc::to_string(morv::qc::TerminationKind)
morv::qc::to_string(morv::qc::JobRelation)
morv::qc::to_string(morv::qc::TaskKind)
morv::qc::to_string(morv::qc::EnergyKind)
morv::qc::to_string(morv::qc::ConvergenceStatus)
morv::qc::to_string(morv::qc::CriterionKind)
morv::qc::to_string(morv::qc::SpinChannel)
morv::qc::validate_document(morv::qc::Document const&)
LIST
)

expected_importer=$(sort <<'LIST'
morv::qc::import_output(std::basic_string_view<char, std::char_traits<char> >, std::basic_string_view<char, std::char_traits<char> >)
LIST
)

status=0
# Compares the exports of library $1 with the list $2.
expect_exports() {
  if ! diff <(echo "$2") <(exported "$1"); then
    echo "unexpected exports of $1" >&2
    status=1
  fi
}
expect_exports "$codec" "$expected_codec"
expect_exports "$model" "$expected_model"
expect_exports "$importer" "$expected_importer"
exit $status
