#pragma once

/// Each measures some figures, and prints a row of the table for each.

void MeasureExchanges();
void MeasureLoading();
void MeasureParts();

void MeasureSteps();
void MeasureSectors();
void MeasureMeasurements();
