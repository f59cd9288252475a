#include "library_count.h"

#include <QFile>

#include <assimp/Importer.hpp>
#include <assimp/camera.h>
#include <assimp/config.h>
#include <assimp/light.h>
#include <assimp/scene.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test {

namespace {

constexpr rlim_t mostSeconds = 10;
constexpr rlim_t mostMemory = rlim_t(2) << 30;

template <typename T>
bool isNamed(T** items, unsigned count, const aiString& name)
{
    for (unsigned i = 0; i < count; ++i) {
        if (items[i]->mName == name)
            return true;
    }
    return false;
}

int countObjects(const aiScene& scene, const aiNode& node)
{
    const int others = int(isNamed(scene.mLights, scene.mNumLights, node.mName)) +
                       int(isNamed(scene.mCameras, scene.mNumCameras, node.mName));
    const int carried = others + int(node.mNumMeshes);
    int count = others > 0 || carried == 1 ? std::max(1, carried) : 1 + carried;
    for (unsigned i = 0; i < node.mNumChildren; ++i) {
        if (node.mChildren[i])
            count += countObjects(scene, *node.mChildren[i]);
    }
    return count;
}

int readAndCount(const QString& path)
{
    const rlimit seconds{mostSeconds, mostSeconds};
    const rlimit core{0, 0};
    setrlimit(RLIMIT_CPU, &seconds);
    setrlimit(RLIMIT_CORE, &core);
#ifndef __SANITIZE_ADDRESS__ // which takes more addresses than a limit would leave
    const rlimit memory{mostMemory, mostMemory};
    setrlimit(RLIMIT_AS, &memory);
#endif
    Assimp::Importer importer;
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    const aiScene* scene = importer.ReadFile(QFile::encodeName(path).toStdString(), 0);
    return scene && scene->mRootNode ? countObjects(*scene, *scene->mRootNode) : unknownCount;
}

} // namespace

int objectsByLibrary(const QString& path)
{
    int ends[2];
    if (pipe(ends) != 0)
        return unknownCount;
    const pid_t child = fork();
    if (child == 0) {
        int count = readAndCount(path);
        _exit(write(ends[1], &count, sizeof count) == sizeof count ? 0 : 1);
    }
    close(ends[1]);
    int count = unknownCount;
    const bool isTold = child > 0 && read(ends[0], &count, sizeof count) == sizeof count;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return isTold ? count : unknownCount;
}

} // namespace test
