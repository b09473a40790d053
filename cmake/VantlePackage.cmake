# What `cmake --install` adds beside the targets: nothing yet.
