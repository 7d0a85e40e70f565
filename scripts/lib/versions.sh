# Everything that is downloaded, pinned: version and SHA-256. Debian's own packages are pinned by the
# release.

# The Windows JVM, as a Python package: 17, which every Wine here runs, or the one that CORVANE_JVM names.
# Debian 12's Wine also runs 11, that of Debian 13 also 21 and 25.
case ${CORVANE_JVM:-17} in
  11)
    jvm_version=11.0.13.1
    jvm_sha256=27babb9eb45d81eee73145dd79ab7abeb86e86cc2f8820ecb397b6aa034b62f5
    ;;
  17)
    jvm_version=17.0.9.2
    jvm_sha256=f8d8bb10f721aee7ec6ad85409b241e2d6b490afb314da921ad3efd9ff7b8197
    ;;
  21)
    jvm_version=21.0.8.2
    jvm_sha256=1c8e37d26315dfbb603503153d3dcdd90021fda71d64ab0b6309f06f83c0d503
    ;;
  25)
    jvm_version=25.0.2.1
    jvm_sha256=5f0ad2e8f7ad3b40eef8af75062d830afd3feccca62fc03db611b2e9a5fa9824
    ;;
  *)
    echo "CORVANE_JVM is none of 11, 17, 21 and 25: $CORVANE_JVM" >&2
    exit 1
    ;;
esac

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

# What writes the bill of materials, and what that needs itself.
sbom_version=11.12.0
sbom_packages="
cyclonedx-python-lib==$sbom_version --hash=sha256:0e807521a921a5c3cb8ce1153f8a61d29eedfe76a46aac2796b7c6b573391a54
boolean-py==5.0 --hash=sha256:ef28a70bd43115208441b53a045d1549e2f0ec6e3d08a9d142cbc41c1938e8d9
defusedxml==0.7.1 --hash=sha256:a352e7e428770286cc899e2542b6cdaedb2b4953ff269a210103ec58f6198a61
license-expression==30.4.4 --hash=sha256:421788fdcadb41f049d2dc934ce666626265aeccefddd25e162a26f23bcbf8a4
packageurl-python==0.17.6 --hash=sha256:31a85c2717bc41dd818f3c62908685ff9eebcb68588213745b14a6ee9e7df7c9
py-serializable==2.1.0 --hash=sha256:b56d5d686b5a03ba4f4db5e769dc32336e142fc3bd4d68a8c25579ebb0a67304
sortedcontainers==2.4.0 --hash=sha256:a163dcaede0f1c021485e957a39245190e74249897e2ae4b2aa38595db237ee0
typing-extensions==4.16.0 --hash=sha256:481caa481374e813c1b176ada14e97f1f67a4539ce9cfeb3f350d78d6370c2e8
"
