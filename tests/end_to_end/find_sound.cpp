// Tells where one sound is most like a part of another: prints the first sample of that part, which is
// negative where the sound found hangs over the beginning, and the correlation there, 1 for the same sound
// at whatever level. Both files hold samples of 16 bits and nothing else.
//
//   find_sound SOUND SOUND_TO_SEARCH
#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Samples = std::vector<double>;
using Spectrum = std::vector<std::complex<double>>;

// Parts this much weaker than the sound looked for are no match, whatever their form: noise is like anything.
constexpr double weakestMatch = 0.1;

Samples readSamples(const std::string& path)
{
    std::vector<std::int16_t> samples(std::filesystem::file_size(path) / sizeof(std::int16_t));
    std::ifstream file(path, std::ios::binary);
    file.read(reinterpret_cast<char*>(samples.data()),
        static_cast<std::streamsize>(samples.size() * sizeof(std::int16_t)));
    if (!file || samples.empty())
        throw std::runtime_error(path + " holds no samples");
    return { samples.begin(), samples.end() };
}

// In place; the size is a power of two.
void transform(Spectrum& values)
{
    const std::size_t size = values.size();
    for (std::size_t i = 1, reversed = 0; i < size; ++i) {
        std::size_t bit = size / 2;
        for (; reversed & bit; bit /= 2)
            reversed ^= bit;
        reversed ^= bit;
        if (i < reversed)
            std::swap(values[i], values[reversed]);
    }
    for (std::size_t half = 1; half < size; half *= 2) {
        Spectrum turns(half);
        for (std::size_t i = 0; i < half; ++i)
            turns[i] = std::polar(1.0, -std::numbers::pi * double(i) / double(half));
        for (std::size_t begin = 0; begin < size; begin += 2 * half)
            for (std::size_t i = begin; i < begin + half; ++i) {
                const auto turned = values[i + half] * turns[i - begin];
                values[i + half] = values[i] - turned;
                values[i] += turned;
            }
    }
}

Spectrum spectrumOf(const Samples& samples, std::size_t size)
{
    Spectrum spectrum(samples.begin(), samples.end());
    spectrum.resize(size);
    transform(spectrum);
    return spectrum;
}

// The sum of products of both at each offset of the sound; offset i stands at i modulo the result's size.
Samples productsOf(const Samples& sound, const Samples& searched)
{
    const std::size_t size = std::bit_ceil(sound.size() + searched.size());
    Spectrum product = spectrumOf(searched, size);
    const Spectrum other = spectrumOf(sound, size);
    for (std::size_t i = 0; i < size; ++i)
        product[i] = std::conj(product[i] * std::conj(other[i])); // conjugated: the way back
    transform(product);
    Samples products(size);
    for (std::size_t i = 0; i < size; ++i)
        products[i] = product[i].real() / double(size);
    return products;
}

// energies[i] is the energy of the first i samples.
Samples energiesOf(const Samples& samples)
{
    Samples energies { 0 };
    for (const double sample : samples)
        energies.push_back(energies.back() + sample * sample);
    return energies;
}

struct Match {
    std::int64_t offset = 0;
    double correlation = 0;
};

Match bestMatch(const Samples& sound, const Samples& searched)
{
    const Samples products = productsOf(sound, searched);
    const Samples energies = energiesOf(searched);
    const double soundEnergy = energiesOf(sound).back();
    const auto length = std::int64_t(sound.size());
    const auto end = std::int64_t(searched.size());
    Match best;
    for (std::int64_t offset = 1 - length; offset < end; ++offset) {
        const double energy = energies[std::size_t(std::min(offset + length, end))]
            - energies[std::size_t(std::max<std::int64_t>(offset, 0))];
        if (energy <= soundEnergy * weakestMatch * weakestMatch)
            continue;
        const std::size_t place = offset < 0 ? products.size() - std::size_t(-offset) : std::size_t(offset);
        const double correlation = products[place] / std::sqrt(energy * soundEnergy);
        if (correlation > best.correlation)
            best = { offset, correlation };
    }
    return best;
}

} // namespace

int main(int argc, char** argv)
try {
    if (argc != 3)
        throw std::runtime_error("usage: find_sound SOUND SOUND_TO_SEARCH");
    const Match match = bestMatch(readSamples(argv[1]), readSamples(argv[2]));
    std::printf("%lld %.4f\n", static_cast<long long>(match.offset), match.correlation);
    return 0;
} catch (const std::exception& problem) {
    std::fprintf(stderr, "find_sound: %s\n", problem.what());
    return 1;
}
