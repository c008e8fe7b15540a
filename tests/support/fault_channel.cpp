#include "support/fault_channel.h"

#include <algorithm>

namespace testing_support {

void FaultPlan::failAt(
    int n, FaultPoint point, platform::PlatformError error, std::string containing
) {
    faults_.push_back({n, point, std::move(error), {}, std::move(containing)});
}

void FaultPlan::answerAt(int n, std::string answer, std::string containing) {
    const platform::PlatformError none(0, "");
    faults_.push_back({n, FaultPoint::answer, none, std::move(answer), std::move(containing)});
}

void FaultPlan::endProgramAt(int n, FaultPoint point, std::string containing) {
    faults_.push_back({n, point, std::nullopt, {}, std::move(containing)});
}

void FaultPlan::Fault::raise() const {
    if (error) {
        throw platform::PlatformError(*error);
    }
    throw platform::ProgramEnd();
}

void FaultPlan::refuseBegin(platform::PlatformError error, int times) {
    refusals_.insert(refusals_.end(), static_cast<std::size_t>(times), error);
}

std::optional<FaultPlan::Fault> FaultPlan::due(const std::string& document) {
    for (Fault& fault : faults_) {
        if (document.find(fault.containing) != std::string::npos) {
            --fault.left;
        }
    }
    const auto found = std::find_if(faults_.begin(), faults_.end(), [](const Fault& fault) {
        return fault.left == 0;
    });
    if (found == faults_.end()) {
        return std::nullopt;
    }
    const Fault fault = *found;
    faults_.erase(found);
    return fault;
}

void FaultChannel::begin(const std::string& companyFile, int openMode) {
    if (!plan_->refusals_.empty()) {
        const platform::PlatformError error = plan_->refusals_.front();
        plan_->refusals_.erase(plan_->refusals_.begin());
        throw error;
    }
    channel_->begin(companyFile, openMode);
}

std::string FaultChannel::exchange(const std::string& document) {
    ++plan_->exchanges;
    const auto fault = plan_->due(document);
    if (fault && fault->point == FaultPoint::before) {
        fault->raise();
    }
    std::string answer = channel_->exchange(document);
    plan_->documents.push_back(document);
    if (fault && fault->point == FaultPoint::after) {
        fault->raise();
    }
    return fault ? fault->answer : answer;
}

}  // namespace testing_support
