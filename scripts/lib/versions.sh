# Everything that is downloaded, pinned: version and SHA-256. Debian's own packages are pinned by the
# release.

debian_release=12

# The Windows JVM, as a Python package: newer ones do not start on this release's Wine.
jvm_version=17.0.9.2
jvm_sha256=f8d8bb10f721aee7ec6ad85409b241e2d6b490afb314da921ad3efd9ff7b8197

# The parser of shortcuts, which knows the format from its description alone.
lnkparse_version=1.6.0
lnkparse_sha256=7b3b1289e99992a4d3901d80ac9ab87fa8de854b2bffe5c4011453b093038b50

maven_plugin=org.apache.maven.plugins:maven-dependency-plugin:3.8.1

junit_artifact=org.junit.platform:junit-platform-console-standalone:1.13.4
junit_sha256=3fdfc37e29744a9a67dd5365e81467e26fbde0b7aa204e6f8bbe79eeaa7ae892

jna_artifact=net.java.dev.jna:jna:5.18.1
jna_sha256=260c4b1e22b1db9e110ee441c4f13ce115f841fa48c41d78750986214b395557

jna_platform_artifact=net.java.dev.jna:jna-platform:5.18.1
jna_platform_sha256=ad14c1b1ec4f43d396231219dfa635ebf828f738eac9f890ea1bc07795892d9a
