#pragma once

#include <opencv2/core.hpp>

/**
 * The best border between person and background: follows the evidence of each pixel and prefers to
 * run along the picture's edges.
 * @param lab CV_8UC3.
 * @param evidence CV_32F; above 0 speaks for the person.
 * @param dull CV_32F, 0 to 1: where edges of the picture belong to the background alone.
 * @param stiffness how much a border costs that follows no edge.
 * @return CV_32F, 1 on the person and 0 elsewhere.
 */
cv::Mat kdCutMask(const cv::Mat& lab, const cv::Mat& evidence, const cv::Mat& dull,
                  float stiffness);
