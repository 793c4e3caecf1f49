#include "DrawnPerson.h"

#include <opencv2/imgproc.hpp>

namespace {

using Colour = cv::Scalar;

/** Coordinates in units of the picture's height, with the head's middle at the top. */
class Brush
{
public:
    Brush(cv::Mat& picture, double aside) : m_picture(picture), m_aside(aside) {}

    cv::Point at(double x, double y) const
    {
        return {cvRound(m_aside * m_picture.cols + x * m_picture.rows),
                cvRound(y * m_picture.rows)};
    }

    void oval(double x, double y, double halfWidth, double halfHeight, const Colour& colour)
    {
        const cv::Size axes(cvRound(halfWidth * m_picture.rows),
                            cvRound(halfHeight * m_picture.rows));
        cv::ellipse(m_picture, at(x, y), axes, 0, 0, 360, colour, cv::FILLED, cv::LINE_AA);
    }

    void body(const Colour& colour)
    {
        const std::vector<cv::Point> outline = {at(-0.08, 0.60), at(-0.22, 0.68), at(-0.33, 0.78),
                                                at(-0.38, 1.05), at(0.38, 1.05),  at(0.33, 0.78),
                                                at(0.22, 0.68),  at(0.08, 0.60)};
        cv::fillPoly(m_picture, std::vector<std::vector<cv::Point>>{outline}, colour, cv::LINE_AA);
    }

private:
    cv::Mat& m_picture;
    double m_aside;
};

void drawOutline(Brush& brush, const Colour& hair, const Colour& skin, const Colour& shirt)
{
    brush.body(shirt);
    brush.oval(0.0, 0.34, 0.150, 0.215, hair);
    brush.oval(0.0, 0.56, 0.075, 0.10, skin);
    brush.oval(0.0, 0.40, 0.135, 0.185, skin);
}

void drawFace(Brush& brush)
{
    const Colour shade(95, 120, 165);
    for (const double side : {-1.0, 1.0}) {
        brush.oval(side * 0.058, 0.365, 0.042, 0.026, shade);
        brush.oval(side * 0.058, 0.335, 0.042, 0.009, Colour(40, 50, 70));
        brush.oval(side * 0.058, 0.367, 0.028, 0.012, Colour(225, 225, 230));
        brush.oval(side * 0.058, 0.367, 0.013, 0.013, Colour(30, 30, 30));
        brush.oval(side * 0.016, 0.445, 0.010, 0.006, Colour(70, 90, 130));
    }
    brush.oval(0.0, 0.41, 0.012, 0.04, Colour(170, 195, 235));
    brush.oval(0.0, 0.498, 0.048, 0.014, Colour(75, 75, 160));
}

void addNoise(cv::Mat& picture, unsigned seed)
{
    cv::Mat noise(picture.size(), CV_16SC3);
    cv::RNG random(seed);
    random.fill(noise, cv::RNG::NORMAL, 0.0, 2.0);
    cv::add(picture, noise, picture, {}, CV_8UC3);
}

cv::Mat opaque(const cv::Mat& picture)
{
    cv::Mat result;
    cv::cvtColor(picture, result, cv::COLOR_BGR2BGRA);
    return result;
}

} // namespace

DrawnPerson::DrawnPerson(cv::Size size) : m_background(size, CV_8UC3, Colour(150, 120, 90))
{
    cv::RNG random(7);
    const int side = size.height / 9;
    for (int i = 0; i < 160; ++i) {
        const cv::Point corner(random.uniform(-side, size.width),
                               random.uniform(-side, size.height));
        const Colour colour(random.uniform(60, 250), random.uniform(90, 220),
                            random.uniform(20, 120));
        cv::rectangle(m_background, {corner, cv::Size(side, side * 3 / 2)}, colour, cv::FILLED);
    }
}

cv::Mat DrawnPerson::frame(double aside, unsigned noise) const
{
    cv::Mat picture = m_background.clone();
    Brush brush(picture, aside);
    drawOutline(brush, Colour(25, 35, 50), Colour(140, 170, 220), Colour(60, 40, 170));
    drawFace(brush);
    cv::GaussianBlur(picture, picture, {}, picture.rows / 400.0);
    addNoise(picture, noise);
    return opaque(picture);
}

cv::Mat DrawnPerson::room(unsigned noise) const
{
    cv::Mat picture;
    cv::GaussianBlur(m_background, picture, {}, m_background.rows / 400.0);
    addNoise(picture, noise);
    return opaque(picture);
}

cv::Mat DrawnPerson::truth(double aside) const
{
    cv::Mat mask = cv::Mat::zeros(m_background.size(), CV_8U);
    Brush brush(mask, aside);
    drawOutline(brush, Colour(255), Colour(255), Colour(255));
    return mask > 127;
}
