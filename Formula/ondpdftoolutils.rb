# For Homebrew on macOS: this repository is its own tap, see docs/building-on-macos.md.
class Ondpdftoolutils < Formula
  desc "Shared utility library of PDF Orvell"
  homepage "https://www.pdforvell.example/"
  # No archive is published: what is built is the repository that was tapped.
  head "file://#{Pathname(__dir__).parent}", using: :git, branch: "main"

  depends_on "cli11" => :build
  depends_on "cmake" => :build
  depends_on "ninja" => :build
  depends_on "nlohmann-json" => :build
  depends_on "pkg-config" => [:build, :test]
  depends_on "inih"
  depends_on "qt"

  def install
    system "cmake", "-S", ".", "-B", "build", "-G", "Ninja", "-DOND_QT=6", *std_cmake_args
    system "cmake", "--build", "build"
    system "cmake", "--install", "build"
  end

  test do
    assert_match "PDF Orvell.app", shell_output("#{bin}/pdforvell-inspect locations")
    (testpath/"main.cpp").write <<~EOS
      #include <config/MacConfigPath.h>
      int main() { return MacConfigPath::GetInstance()->GetExeName() == "main" ? 0 : 1; }
    EOS
    flags = shell_output("pkg-config --cflags --libs ondpdftoolutils").split
    system ENV.cxx, "-std=c++17", "main.cpp", *flags, "-Wl,-rpath,#{lib}", "-o", "main"
    system "./main"
  end
end
