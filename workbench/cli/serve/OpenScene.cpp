#include "workbench/cli/serve/OpenScene.h"

#include <utility>

namespace workbench {

OpenScene::OpenScene(const lumo::Host& host, LiveScene& live, const StoredScene& scene,
                     SceneOnDisk::Worker worker)
    : host_(host), live_(live), opened_(std::nullopt), disk_(std::move(worker)) {
    if (!scene.file.empty()) saved(scene);
}

void OpenScene::saved(const StoredScene& scene) {
    file_ = scene.file;
    live_.setFile(file_);
    name_ = scene.name;
    opened_ = scene.content;
    disk_.follow(file_, opened_);
    noteStored();
    touch();
}

/// All instances are now in the file under their names.
void OpenScene::noteStored() {
    origins_.clear();
    for (const auto& instance : live_.instances())
        origins_[instance->writer()] = {instance->name(), instance->name()};
}

void OpenScene::open(const StoredScene& scene, const SceneFile& instances) {
    if (scene.file == file_) {
        live_.take(instances);
    } else {
        live_.replace(instances);
    }
    saved(scene);
}

void OpenScene::added(const LiveInstance& instance, const LiveInstance& like) {
    origins_[instance.writer()] = {"", origins_[like.writer()].like};
}

void OpenScene::lock(bool isLocked) {
    if (isLocked != isLocked_) touch();
    isLocked_ = isLocked;
}

void OpenScene::runFrame(double now) {
    if (disk_.runFrame(now)) touch();
}

SceneSnapshot OpenScene::snapshot() const {
    SceneSnapshot snapshot{host_.parameters, file_,           name_, revision_,        isLocked_,
                           opened_,          disk_.content(), {},    live_.redaction()};
    for (const auto& instance : live_.instances()) {
        const auto known = origins_.find(instance->writer());
        const Origin origin = known == origins_.end() ? Origin{} : known->second;
        snapshot.instances.push_back(
            {instance->name(), origin.stored, origin.like, instance->chosenValues()});
    }
    return snapshot;
}

}  // namespace workbench
