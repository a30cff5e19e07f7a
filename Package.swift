// swift-tools-version:5.9
// NutritionKit for iOS apps: the portable C++20 core and the Objective-C++ shell in one target,
// imported in Swift as `import NutritionKit`. The module's resources (strings, questionnaires,
// fasting phases, images) and its privacy manifest go into the target's resource bundle.
import PackageDescription

let package = Package(
    name: "NutritionKit",
    platforms: [.iOS(.v15)],
    products: [
        .library(name: "NutritionKit", targets: ["NutritionKit"]),
    ],
    targets: [
        .target(
            name: "NutritionKit",
            path: ".",
            exclude: [
                "src/CMakeLists.txt",
                "platform/ios/CMakeLists.txt",
            ],
            sources: ["src", "platform/ios"],
            resources: [
                .copy("resources/strings"),
                .process("resources/images"),
                .copy("resources/fasesAyuno.json"),
                .copy("resources/info_actividad.json"),
                .copy("resources/info_ayuno.json"),
                .copy("resources/info_comidas.json"),
                .copy("resources/info_intolerancias.json"),
                .copy("resources/info_preferencias.json"),
                .copy("resources/profileWithExcluded.json"),
                .copy("resources/profileWithoutExcluded.json"),
                .copy("resources/wait_screens.json"),
                .copy("platform/ios/PrivacyInfo.xcprivacy"),
            ],
            publicHeadersPath: "platform/ios/include",
            cxxSettings: [
                .headerSearchPath("src"),
                .headerSearchPath("platform/ios"),
            ],
            linkerSettings: [
                .linkedFramework("Foundation"),
                .linkedFramework("UIKit"),
                .linkedFramework("QuartzCore"),
                .linkedFramework("CoreGraphics"),
                .linkedFramework("CoreText"),
                .linkedFramework("UserNotifications"),
            ]
        ),
    ],
    cxxLanguageStandard: .cxx20
)
