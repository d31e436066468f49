#include "exit_status.hpp"

namespace morv::cli {
namespace {

int rank(int status) {
    switch (status) {
        case exit_complete: return 0;
        case exit_partial: return 1;
        case exit_failed: return 2;
        default: return 3;
    }
}

}  // namespace

int exit_status_of(model::ParseStatus status) {
    switch (status) {
        case model::ParseStatus::complete: return exit_complete;
        case model::ParseStatus::partial: return exit_partial;
        default: return exit_failed;
    }
}

int worse_exit_status(int a, int b) { return rank(b) > rank(a) ? b : a; }

}  // namespace morv::cli
