include(FetchContent)
FetchContent_Declare(KelStd GIT_REPOSITORY "${KELSTD_REPOSITORY}" GIT_TAG v0.1.0)
FetchContent_MakeAvailable(KelStd)
