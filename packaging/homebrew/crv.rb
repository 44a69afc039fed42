# Homebrew formula of crv. Nobody has run it: no Homebrew was available. Replace the address and the
# sum by those of the release; scripts/release.sh prints the sum.
class Crv < Formula
  desc "Charts and tables from simulation results"
  homepage "https://crv.invalid/"
  url "https://crv.invalid/crv-1.0.0.tar.gz"
  sha256 "0000000000000000000000000000000000000000000000000000000000000000"
  license "MIT"

  depends_on "cmake" => :build
  depends_on "ghostscript"

  def install
    system "cmake", "-S", ".", "-B", "build", *std_cmake_args
    system "cmake", "--build", "build", "--target", "programs"
    system "cmake", "--install", "build"
  end

  test do
    cp doc/"examples/run1.req", testpath
    # The exit status of a finished chart is 1.
    ENV["CRV_PRINTCHAIN"] = "crv2pdf"
    shell_output("#{bin}/crv -r 0,38:3 -f run1.req -p", 1)
    assert_predicate testpath/"crv.pdf", :exist?
  end
end
